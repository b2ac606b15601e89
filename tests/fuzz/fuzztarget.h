#pragma once

#include <QByteArray>

namespace fuzz {

/// The two functions that each target defines.

/// Called once: makes the application object and what is kept from input to input, which lives until the
/// process ends.
void begin(int &argc, char **argv);

/// Tries one input. Must leave everything as it was before, so that an input fails alone as it did in a
/// row. `input` is only valid during the call, and nothing may be read behind its end.
void tryInput(const QByteArray &input);

/// Ends the process, which counts as a finding, unless `holds`. `what` says what must hold.
void require(bool holds, const char *what);

} // namespace fuzz
