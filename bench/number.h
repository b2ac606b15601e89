#pragma once

#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

/// One measured number. report() prints it as a line of fields with tabs between them, which table.awk turns
/// into a row of the table of all numbers; a field that does not apply is empty.
class Number
{
public:
    Number(std::string name, double value, std::string unit)
        : m_name(std::move(name))
        , m_value(value)
        , m_unit(std::move(unit))
    {}

    /// The worst of the rounds, where the value is their median; of a gap, that by the clock.
    Number &worst(double value) { return set(m_worst, value); }

    /// A bare program's way to the same end, measured in the same run and in the same unit. Told as a ratio.
    Number &beside(std::string what, double value)
    {
        m_bare = std::move(what);
        return set(m_bareValue, value);
    }

    // The agreed limits. An aim does not count as missed.
    Number &atMost(double limit) { return set(m_atMost, limit); }
    /// A limit that the worst must hold, not the median.
    Number &worstAtMost(double limit)
    {
        m_isForTheWorst = true;
        return atMost(limit);
    }
    Number &atLeast(double limit) { return set(m_atLeast, limit); }
    Number &ratioAtMost(double limit) { return set(m_ratioAtMost, limit); }
    Number &asAim()
    {
        m_isAim = true;
        return *this;
    }

    void report() const
    {
        std::printf("number\t%s\t%.6g\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n", m_name.c_str(), m_value,
                    m_unit.c_str(), text(m_worst).c_str(), text(m_atMost).c_str(), text(m_atLeast).c_str(),
                    m_bare.c_str(), text(m_bareValue).c_str(), text(m_ratioAtMost).c_str(),
                    m_isAim ? "aim" : "", m_isForTheWorst ? "worst" : "");
        std::fflush(stdout); // what was measured is told even if the next measurement ends the program
    }

private:
    Number &set(double &field, double value)
    {
        field = value;
        return *this;
    }

    static std::string text(double value)
    {
        char digits[32] = "";
        if (!std::isnan(value))
            std::snprintf(digits, sizeof digits, "%.6g", value);
        return digits;
    }

    static constexpr double kNone = NAN;

    std::string m_name;
    double m_value;
    std::string m_unit;
    std::string m_bare;
    double m_bareValue = kNone;
    double m_worst = kNone;
    double m_atMost = kNone;
    double m_atLeast = kNone;
    double m_ratioAtMost = kNone;
    bool m_isAim = false;
    bool m_isForTheWorst = false;
};
