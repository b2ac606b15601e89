#pragma once

class QLineEdit;

/// What a lamp can show; the values are the colour codes of the design. There is no code 1.
enum class LampColour : int {
    PaleGreen = 0,
    Gray = 2,
    Yellow = 3,
    Dark = 4, ///< the colour of a lamp that is not lit
    Green = 5,
};

/// What the connection lamp tells; the values are the state numbers of the design.
enum class ConnectionState : int {
    SystemKnown = 0, ///< pale green
    NoLink = 2,      ///< gray
    LinkOpen = 3,    ///< yellow: no system is known yet
};

/// Colours a lamp, which is a line edit, by the base role of its palette in all colour groups. A code that
/// is none of LampColour leaves the palette as it is.
void setLampColour(QLineEdit *lamp, int code);
void setLampColour(QLineEdit *lamp, LampColour colour);
