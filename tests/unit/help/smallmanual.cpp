#include "smallmanual.h"

#include <QDebug>
#include <QFile>
#include <QImage>
#include <QProcess>

namespace {

constexpr char kProject[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<QtHelpProject version="1.0">
<namespace>zrt.vxconfig</namespace>
<virtualFolder>doc</virtualFolder>
<filterSection>
<toc>
<section title="First" ref="index.html">
<section title="Second" ref="second.html"/>
<section title="Third" ref="third.html"/>
</section>
</toc>
<keywords>
<keyword name="both" ref="second.html#end"/>
<keyword name="both" ref="third.html"/>
<keyword name="one" ref="third.html"/>
</keywords>
<files>
<file>index.html</file><file>second.html</file><file>third.html</file><file>dot.png</file>
</files>
</filterSection>
</QtHelpProject>
)";

constexpr char kCollection[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<QHelpCollectionProject version="1.0">
<docFiles>
<generate><file><input>small.qhp</input><output>small.qch</output></file></generate>
<register><file>small.qch</file></register>
</docFiles>
</QHelpCollectionProject>
)";

/// %1 is the folder.
constexpr char kFirstPage[] = R"(<html><head><title>First page</title></head><body>
<p>The first page.</p>
<p><a href="second.html#end">to the second</a></p>
<p><a href="https://manual.example/page">to the web</a></p>
<p><a href="missing.html">to nothing</a></p>
<p><img src="dot.png"/></p>
<p><a href="http://manual.example/page">to the open web</a></p>
<p><a href="mailto:help@manual.example">to a person</a></p>
<p><a href="file://%1/third.html">to a file</a></p>
<p><a href="ftp://manual.example/page">to a store</a></p>
<p><a href="other:page">to an unknown place</a></p>
<p><a href="qrc:/page.html">to a resource</a></p>
</body></html>
)";

} // namespace

bool SmallManual::build() const
{
    const auto write = [this](const char *name, const QByteArray &bytes) {
        QFile file(folder.path() + QLatin1Char('/') + QLatin1String(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
    QByteArray second = "<html><head><title>Second page</title></head><body><p>The second page.</p>";
    for (int line = 0; line < 100; ++line)
        second += "<p>Line</p>";
    second += "<p><a name=\"end\">The end.</a></p></body></html>";
    QImage dot(4, 4, QImage::Format_RGB32);
    dot.fill(Qt::red);
    const bool written =
        write("small.qhp", kProject) && write("small.qhcp", kCollection) &&
        write("index.html", QString::fromLatin1(kFirstPage).arg(folder.path()).toUtf8()) &&
        write("second.html", second) &&
        write("third.html",
              "<html><head><title>Third page</title></head><body>The third page.</body></html>") &&
        dot.save(folder.path() + QStringLiteral("/dot.png"));
    QProcess generator;
    generator.setProcessChannelMode(QProcess::MergedChannels);
    generator.setWorkingDirectory(folder.path());
    generator.start(QStringLiteral(VX_HELP_GENERATOR),
                    {QStringLiteral("small.qhcp"), QStringLiteral("-o"), QStringLiteral("small.qhc")});
    if (written && generator.waitForFinished() && generator.exitCode() == 0 && QFile::exists(collection()))
        return true;
    qCritical() << "The manual cannot be built:" << generator.readAll();
    return false;
}

QString pageAddress(const QString &page)
{
    return QStringLiteral("qthelp://zrt.vxconfig/doc/") + page;
}
