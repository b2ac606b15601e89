#pragma once

#include "link/settings.h"

#include <array>

/// The texts of the serial parameters, as the settings file and the buttons of the box write them, and
/// what they mean.
namespace serialparameters {

enum class Field {
    BaudRate,
    Parity,
    DataBits,
    StopBits,
};

/// All fields in the order in which they are parsed and written.
constexpr std::array<Field, 4> kFields = {Field::BaudRate, Field::Parity, Field::DataBits, Field::StopBits};

/// Takes one field out of `text` into the record: the number, and its part of `serialConfig`, which is
/// begun anew by the baud rate and grown by the others, as in "115200:E,8,1". Of the others only the first
/// character of the text counts. Returns false for a bad text, and logs it: then the number stays, and on
/// purpose the bad character stays appended.
[[nodiscard]] bool parse(Field field, const QString &text, model_Namespace::Settings &settings);

} // namespace serialparameters
