#include "settings/serialparameters.h"

#include <QDebug>
#include <QSerialPort>
#include <optional>
#include <vector>

namespace serialparameters {

namespace {

struct Choice
{
    const char *text;
    int value;
};

using Choices = std::vector<Choice>;

std::optional<int> valueOf(const QString &text, const Choices &choices)
{
    for (const Choice &choice : choices) {
        if (text == QLatin1String(choice.text))
            return choice.value;
    }
    return std::nullopt;
}

bool parseBaudRate(const QString &text, model_Namespace::Settings &settings)
{
    static const Choices rates = {{"1200", 1200},   {"2400", 2400},   {"4800", 4800},   {"9600", 9600},
                                  {"19200", 19200}, {"38400", 38400}, {"57600", 57600}, {"115200", 115200}};
    const std::optional<int> rate = valueOf(text, rates);
    if (!rate) {
        qDebug() << "Baud Rate not Parsed";
        return false;
    }
    settings.baudRate = *rate;
    settings.serialConfig = text;
    return true;
}

/// A field whose text is known by its first character.
struct LetterField
{
    char separator;
    Choices choices;
    int model_Namespace::Settings::*number;
    const char *complaint;
};

bool parseLetter(const LetterField &field, const QString &text, model_Namespace::Settings &settings)
{
    const QString letter = text.left(1);
    settings.serialConfig += QLatin1Char(field.separator) + letter;
    const std::optional<int> value = valueOf(letter, field.choices);
    if (!value) {
        qDebug() << field.complaint;
        return false;
    }
    settings.*field.number = *value;
    return true;
}

} // namespace

bool parse(Field field, const QString &text, model_Namespace::Settings &settings)
{
    using model_Namespace::Settings;
    static const LetterField parity = {':',
                                       {{"E", QSerialPort::EvenParity},
                                        {"M", QSerialPort::MarkParity},
                                        {"N", QSerialPort::NoParity},
                                        {"O", QSerialPort::OddParity},
                                        {"S", QSerialPort::SpaceParity}},
                                       &Settings::parity,
                                       "Error in parsing Parity"};
    static const LetterField dataBits = {',',
                                         {{"7", QSerialPort::Data7}, {"8", QSerialPort::Data8}},
                                         &Settings::dataBits,
                                         "Error in parsing data bits"};
    static const LetterField stopBits = {',',
                                         {{"1", QSerialPort::OneStop}, {"2", QSerialPort::TwoStop}},
                                         &Settings::stopBits,
                                         "Error in parsing Stop Bit"};

    switch (field) {
    case Field::BaudRate:
        return parseBaudRate(text, settings);
    case Field::Parity:
        return parseLetter(parity, text, settings);
    case Field::DataBits:
        return parseLetter(dataBits, text, settings);
    case Field::StopBits:
        return parseLetter(stopBits, text, settings);
    }
    return false;
}

} // namespace serialparameters
