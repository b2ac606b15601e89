#pragma once

#include <QByteArray>
#include <QObject>
#include <chrono>

class Timer;
class TimeSource;

/// Receive state machine of a transport: takes the bytes of the link one at a time and passes on each
/// frame whose header and checksum are right. Lives as long as its transport, so that the state of the
/// consistency counter survives a link that is opened again.
class Communication_Aux : public QObject
{
    Q_OBJECT

public:
    enum Result { Taken = 0, Refused = -1, Overflow = -2, BadChecksum = -9 };

    /// A frame whose next byte does not come within `receiveTimeout` is dropped.
    explicit Communication_Aux(TimeSource &time, QObject *parent = nullptr,
                               std::chrono::milliseconds receiveTimeout = std::chrono::milliseconds(1000));

    /// Takes one received byte. Results as in Result: 0 taken, the frame may or may not be complete;
    /// -1 refused as a first byte, or bad header; -2 buffer overflow; -9 bad frame CRC.
    int RX_from_VX(uchar byte);

public slots:
    void RcvTimeOver();

signals:
    /// A whole frame, header and trailer included, passed all checks. The array is emptied after the
    /// emission, so a receiver deals with it inside the call.
    void Signal_RcvDatagramOk(QByteArray &frame);

    /// The receiver was reset, after a good frame as well as after a bad one.
    void Signal_ResetRcvData();
};
