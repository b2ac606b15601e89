#pragma once

#include <QString>

/// What the name of a firmware file says about it: "<free>_<module>_<FPGA>_<free>...".
struct FirmwareName
{
    /// What the words of a name are worth.
    enum class Verdict {
        Invalid = 1,   ///< the word of the module or that of the FPGA is none of the known ones
        FewPieces = 2, ///< both words are right, and there are less than seven pieces
        Complete = 3   ///< both words are right, and there are seven pieces or more
    };

    QString file;       ///< the name without folders
    QString moduleWord; ///< second piece: "CON", "ANA" or "GTW" in a valid name; empty if there is none
    QString fpgaWord;   ///< third piece: "FPGA4" or "FPGA5" in a valid name; empty if there is none
    int pieces = 0;     ///< parted by "_"

    bool hasKnownModule() const;
    bool hasKnownFpga() const;
    Verdict verdict() const;

    /// The module for the operator: "Controller", "Analog" or "GTW"; empty if the word is unknown.
    QString moduleText() const;
};

/// The parts of a path's last piece. Folders end with any of the characters \ / | '.
FirmwareName firmwareName(const QString &path);
