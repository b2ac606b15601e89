#pragma once

#include <QString>
#include <QTemporaryDir>

/// A manual of three pages, built into a folder of its own: "index.html" leads to "second.html#end", to
/// "missing.html", to the web, to a person and to addresses of other kinds, and shows the picture "dot.png".
/// The word "one" of the index leads to a page, "both" to the second and the third.
class SmallManual
{
public:
    /// Builds it. False if that fails, which is logged.
    [[nodiscard]] bool build() const;

    QString collection() const { return folder.path() + QStringLiteral("/small.qhc"); }
    QString documentation() const { return folder.path() + QStringLiteral("/small.qch"); }

    const QTemporaryDir folder;
};

/// Address of a page of it.
QString pageAddress(const QString &page);
