#pragma once

#include <QList>
#include <QStringList>

class QLabel;
class QWidget;

/// The name without "COM" read as a decimal number: "COM7" and "7" give 7. 0 if the rest is not a positive
/// number, as in "LPT1" or "COM".
int portNumber(const QString &portName);

/// The table of the COM ports 1 to 150: six rows of 25 numbers, and in front of each row which numbers
/// stand in it.
class PortGrid
{
public:
    static constexpr int kRows = 6;
    static constexpr int kColumns = 25;
    static constexpr int kPorts = kRows * kColumns;

    /// Puts the labels into the two widgets, which own them.
    PortGrid(QWidget &numbers, QWidget &bands);

    /// Sets numbers too wide for their column in a narrower cut of the same font. Takes a while: the fonts
    /// are looked up for it.
    void fitFonts();

    /// Shows the numbers of these ports and "__" in all other places. A port beyond the table is logged, a
    /// name without a number skipped.
    void show(const QStringList &portNames);

private:
    void addNumbers(QWidget &parent);
    void addBands(QWidget &parent);

    QList<QLabel *> m_numbers; ///< [n - 1] is port n
    QList<QLabel *> m_bands;
};
