#include "firmware/firmwarename.h"

#include <QStringList>
#include <algorithm>

namespace {

constexpr int kModulePiece = 1;
constexpr int kFpgaPiece = 2;
constexpr int kPiecesOfACompleteName = 7;

// Not by a regular expression: it matches nothing in a text with half a surrogate pair, which a folder may
// have.
bool endsFolder(QChar character)
{
    return QStringLiteral("\\/|'").contains(character);
}

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
    FirmwareName name;
    const auto file = std::find_if(path.crbegin(), path.crend(), endsFolder);
    name.file = path.right(static_cast<int>(std::distance(path.crbegin(), file)));
    const QStringList pieces = name.file.split(QLatin1Char('_'));
    name.moduleWord = pieces.value(kModulePiece);
    name.fpgaWord = pieces.value(kFpgaPiece);
    name.pieces = pieces.size();
    return name;
}
