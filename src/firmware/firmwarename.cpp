#include "firmware/firmwarename.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr int kModulePiece = 1;
constexpr int kFpgaPiece = 2;
constexpr int kPiecesOfACompleteName = 7;

} // namespace

bool FirmwareName::hasKnownModule() const
{
    return !moduleText().isEmpty();
}

bool FirmwareName::hasKnownFpga() const
{
    return fpgaWord == QLatin1String("FPGA4") || fpgaWord == QLatin1String("FPGA5");
}

FirmwareName::Verdict FirmwareName::verdict() const
{
    if (!hasKnownModule() || !hasKnownFpga())
        return Verdict::Invalid;
    return pieces >= kPiecesOfACompleteName ? Verdict::Complete : Verdict::FewPieces;
}

QString FirmwareName::moduleText() const
{
    if (moduleWord == QLatin1String("CON"))
        return QStringLiteral("Controller");
    if (moduleWord == QLatin1String("ANA"))
        return QStringLiteral("Analog");
    if (moduleWord == QLatin1String("GTW"))
        return QStringLiteral("GTW");
    return QString();
}

FirmwareName firmwareName(const QString &path)
{
    static const QRegularExpression separator(QStringLiteral(R"([\\/|'])"));
    FirmwareName name;
    name.file = path.mid(path.lastIndexOf(separator) + 1);
    const QStringList pieces = name.file.split(QLatin1Char('_'));
    name.moduleWord = pieces.value(kModulePiece);
    name.fpgaWord = pieces.value(kFpgaPiece);
    name.pieces = pieces.size();
    return name;
}
