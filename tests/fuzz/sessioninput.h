#pragma once

#include <QtGlobal>

/// What one input of the session's target consists of: steps, each with a byte for its kind.
namespace sessioninput {

enum class Step : quint8 {
    OpenSerial,     ///< flag: whether it opens
    OpenTcp,        ///< flag: whether it connects
    Close,          ///< the program leaves both links
    Lose,           ///< the port is pulled out, the peer goes away
    Reply,          ///< long block: payload in a right frame, of the link that is open
    ForeignFrame,   ///< long block: a frame as it is, in which lengths may be wrong
    Answer,         ///< what a sound device answers to the last request
    Wait,           ///< u16: milliseconds, up to kLongestWait
    Turn,           ///< the event loop comes round
    ChannelRequest, ///< see fuzz_session.cpp
    SystemCommand,  ///< u8 kind, three u8, u16
    Firmware,       ///< six u8, u16 size of the data
    ModuleStatus,   ///< u8 address; queued
    Eeprom,         ///< u8 module
    SetState,       ///< u8
    React,          ///< u8 signal, u8 what its receiver does: once, at its next emission
    Count
};

constexpr int kLongestWait = 9000;

} // namespace sessioninput
