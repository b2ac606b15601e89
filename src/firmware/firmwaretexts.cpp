#include "firmware/firmwaretexts.h"

#include "firmware/firmwarename.h"

namespace firmwaretexts {

QString cannotOpen()
{
    return QStringLiteral("Unable to open file / File not found");
}

QString tooLarge()
{
    return QStringLiteral("The file is too large for an FPGA image.");
}

QString mismatch()
{
    return QStringLiteral("The target type specified in the filename mismatches with its contents.\n"
                          "Please contact the support team to check with the issue.");
}

QString invalidName()
{
    return QStringLiteral("The No. of parameters provided in the file are invalid\n"
                          "Please contact the administrator");
}

QString separator()
{
    constexpr int kLength = 41;
    return QString(kLength, QLatin1Char('*'));
}

QStringList fileInformation(const FirmwareName &name, const QString &chip)
{
    QStringList texts{QStringLiteral("\n\n\tFile Information"), separator(),
                      QStringLiteral("FPGA type: ") + chip, QStringLiteral("FPGA = ") + name.fpgaWord};
    if (name.hasKnownModule())
        texts.append(name.moduleText());
    return texts;
}

QStringList start(const FirmwareName &name, qint64 size)
{
    return {QStringLiteral("Target = ") + name.moduleText(),
            QStringLiteral("The total bytes read in file: ") + QString::number(size),
            QStringLiteral("\tFlashing FPGA started...")};
}

QStringList completion()
{
    return {separator(), QStringLiteral("\tFlashing FPGA Done....")};
}

QString aborted()
{
    return QStringLiteral("Firmware Flashing Aborted..");
}

} // namespace firmwaretexts
