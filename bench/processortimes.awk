# Of two lines of processor times (user nice system idle iowait irq softirq steal, see proc(5)): what happened
# between them. Much stolen time means that the numbers tell of other machines as well.
NR == 1 {
    for (i = 1; i <= 8; ++i)
        before[i] = $i
}

NR == 2 {
    for (i = 1; i <= 8; ++i)
        all += spent[i] = $i - before[i]
    if (all > 0)
        printf "of the processor time %.0f %% were used, %.1f %% stolen", 100 * (all - spent[4] - spent[5] - spent[8]) / all, 100 * spent[8] / all
}
