# What fails a test though each of its functions passed: a line of the log that no function announced, a warning or
# worse, be it of Qt or of ours, and such a line of Qt from outside the functions, which begins with the name of a class
# or of a category. What the offscreen platform cannot do it tells with the words "This plugin", which may be.
set(vx_unexpected_lines
  "Q(WARN  |SYSTEM): [^)\n]*\\)[^ \n]* ([^T]|T[^h]|Th[^i]|Thi[^s]|This[^ ]|This [^p]|This p[^l])"
  "(^|\n)(Q[A-Z][A-Za-z]*(::[A-Za-z]+)*|qt\\.[a-z.]+): ")
