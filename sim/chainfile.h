#pragma once

#include "sim/chain.h"

namespace sim {

/// Reads the description of a chain: one thing in each line, "keyword key=value ...". "#" begins a comment;
/// a value with blanks or "#" stands in double quotes. Keys that are left out keep the usual values.
///
///   system powering=TEXT transmission=TEXT fifth=TEXT mode=TEXT
///          bitrate=40000|20000|...|312 channels=2|4|...|256
///          claim=N             the number of modules that the status claims, 0 to 65535
///          fixed="100,120"     the codes of the fixed modules, at most ten
///          The four texts may have 1119 bytes together. The program takes the length of all six, each with
///          its zero byte, modulo 256: beyond 255 bytes it sees the beginning of them only.
///   device reset-flag=yes|no   whether the reply after a reset asks for a new start of the session
///          command-reply=N     payload code of the head that acknowledges a command, usually 0x08
///          autozero=MS shunt=MS   how long an autozero runs and a shunt stays on
///   controller IDENTITY HEALTH
///   power IDENTITY HEALTH mode=fixed|auto fixed=MV auto=MV protection=N input=V load=A hot=yes|no
///          minimum=MV maximum=MV   limits of the output voltage; a setpoint beyond them is not taken, and is
///                              an error in the line. The usual setpoint is brought within them.
///          hot=yes with protection=1 brings the output to 5 V, or to minimum= where that is more.
///          The load is a resistor: load= flows at the output voltage that the line chooses by mode=, or at
///          12 V where that is 0. serial="" is a power module that does not answer with an identity.
///   gateway version=TEXT serial=TEXT limit=N core=C pcb=C ptp-state=TEXT
///          limit= is the highest sampling rate that the system allows; core= and pcb= are temperatures
///          bitrate=10000|5000|...|312 channels=2|4|...|256 mode=UDP-B|UDP-M|UDP-U|TCP-S|TCP-C|OFF
///          restart=MS reboot=MS   how long nobody can connect then
///          move=MS             after a new address: until it listens there
///   module type=N count=N IDENTITY HEALTH CHANNEL sensors=TEXT ranges=TEXT
///
///   IDENTITY: serial=TEXT hw=TEXT fw1=TEXT fw2=TEXT. A module's serial that ends in "-" gets the module's
///             address in four digits behind it.
///   HEALTH:   voltage=V temperature=C selftest=N voltage-valid=yes|no temperature-valid=yes|no
///   CHANNEL:  bridge=N range=N offset=TEXT filter=TEXT polarity=yes|no preselect=none|positive|negative|both
///             for both channels; bridgeA=, bridgeB= and so on for one, which goes before the common value.
///             functionA=, functionB=, function= are for modules of type 9. Lists name their items each
///             followed by "$"; those of a type 9 module may join the lists of both channels by "#".
///
/// Modules stand in the order of their addresses. `system`, `device`, `controller`, `power` and
/// `gateway` may stand once each; without a `power` line there is no power module.
///
/// False with an error text that begins with the line's number; `chain` is left alone then.
[[nodiscard]] bool parseChain(const QString &text, Chain *chain, QString *error);

/// The same from a file; the error text names the file.
[[nodiscard]] bool readChainFile(const QString &fileName, Chain *chain, QString *error);

/// Reads a whole text file.
[[nodiscard]] bool readTextFile(const QString &fileName, QString *text, QString *error);

} // namespace sim
