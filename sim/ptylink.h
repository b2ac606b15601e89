#pragma once

#include "sim/link.h"

#include <QString>

#include <chrono>

class TimeSource;

namespace sim {

/// A pseudo terminal that plays a serial port. It outlives the program's opening and closing of its side:
/// what is sent while nobody has it open is lost, as on a line with nothing plugged in. Closing its
/// connection takes the terminal and the name away; both are back after the absence, as a new connection.
class PtyLink : public Link
{
    Q_OBJECT

public:
    explicit PtyLink(TimeSource &time, QObject *parent = nullptr);
    /// Removes the name, unless it meanwhile stands for something else.
    ~PtyLink() override;

    /// Makes the terminal and the symbolic link `name` to it, replacing an old symbolic link. Missing folders
    /// are made. False with the reason if that fails or the platform has no pseudo terminals.
    [[nodiscard]] bool open(const QString &name, QString *error);

private:
    class Terminal;

    bool plugIn(QString *error);
    void comeBackAfter(std::chrono::milliseconds absence);

    TimeSource &m_time;
    QString m_name;
};

} // namespace sim
