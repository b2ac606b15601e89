#pragma once

#include <QMetaType>
#include <QtGlobal>
#include <chrono>
#include <optional>

/// What happens to the sockets of a simulated device in this process, which listens on `port`, without its
/// doing: on the way, or in its machine. A call that the system does not allow ends the test program with the
/// reason.
namespace peersockets {

/// How a connection of the program ends.
enum class End {
    Orderly, ///< the device closes it
    Reset,   ///< it is reset, as by a restart of the device's machine or by a firewall
};

/// From now on connections that are there end so, with nothing on its way to the device.
void endBy(End end, quint16 port);

/// The descriptor of the socket by which this process is connected to the device.
int client(quint16 port);

/// The end that has come to this socket, or comes while nothing else runs; none if it stays connected for so
/// long. Takes nothing from the socket.
std::optional<End> endOf(int socket, std::chrono::milliseconds within = {});

/// The device is gone without a word: nothing that is sent to it arrives, so nothing comes back either, no
/// acknowledgement, no answer to a probe or to an attempt to connect. All that the device has sent before has
/// arrived.
void vanish(quint16 port);

/// It can be reached again by new connections; those of before stay dead.
void comeBack(quint16 port);

/// The way to it is there again, and no connection has noticed.
void resume(quint16 port);

/// How long the system waits for a device that is gone, as the socket by which this process is connected to
/// it tells.
struct Patience
{
    bool asks;                             ///< for signs of life, while nothing else is sent
    std::chrono::seconds silence;          ///< before it asks
    std::chrono::seconds interval;         ///< between two questions
    int questions;                         ///< without an answer, until it gives up
    std::chrono::milliseconds unconfirmed; ///< for what it has sent; 0: much longer than it asks
};
Patience patience(quint16 port);

/// Lets the connection to the device be one of a system that gives up after so many questions, before the
/// program chooses its options.
void setQuestions(quint16 port, int questions);

} // namespace peersockets

Q_DECLARE_METATYPE(peersockets::End)
