#include "storm.h"

#include "app/resources.h"
#include "base/gui/fonts.h"
#include "support/testcertificates.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDateTime>
#include <QDesktopServices>
#include <QPixmapCache>
#include <QTemporaryDir>
#include <cstdio>

namespace {

/// Stands for the programs of the desktop that show reports.
class Viewer : public QObject
{
    Q_OBJECT

public slots:
    void view(const QUrl &) {}
};

struct Arguments
{
    storm::Options options;
    bool isGood = true;
};

Arguments read(const QApplication &application)
{
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("seconds"), QStringLiteral("how long it storms"), QStringLiteral("N"),
                      QStringLiteral("60")});
    parser.addOption({QStringLiteral("seed"), QStringLiteral("of all chance"), QStringLiteral("N")});
    parser.addOption({QStringLiteral("verbose"), QStringLiteral("prints each gesture")});
    parser.addOption({QStringLiteral("log"), QStringLiteral("writes the program's log")});
    parser.addHelpOption();
    parser.process(application);
    Arguments arguments;
    arguments.options.seconds = parser.value(QStringLiteral("seconds")).toInt(&arguments.isGood);
    arguments.options.seed = static_cast<quint32>(QDateTime::currentMSecsSinceEpoch());
    bool isNumber = true;
    if (parser.isSet(QStringLiteral("seed")))
        arguments.options.seed = parser.value(QStringLiteral("seed")).toUInt(&isNumber);
    arguments.isGood = arguments.isGood && isNumber && arguments.options.seconds > 0;
    arguments.options.isVerbose = parser.isSet(QStringLiteral("verbose"));
    arguments.options.hasLog = parser.isSet(QStringLiteral("log"));
    return arguments;
}

} // namespace

int main(int argc, char *argv[])
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QTemporaryDir home(storm::folderPattern()); // of the program's own settings
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    QApplication application(argc, argv);
    initResources();
    fonts::installSubstitutions();
    QApplication::setFont(fonts::text(QApplication::font()));
    QApplication::setQuitOnLastWindowClosed(false);
    // Else pictures of controls as they were painted are kept, 10 MB of them under names that differ with
    // each widget, and dropped again from time to time: what the program holds could not be compared. To
    // clear them is no help, the names stay. So the pictures of styles are read anew with each paint, which
    // takes time.
    QPixmapCache::setCacheLimit(0);
    const Arguments arguments = read(application);
    if (!arguments.isGood)
        return 2;
    std::printf("storm of %d s, seed %u\n", arguments.options.seconds, arguments.options.seed);

    Viewer viewer;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &viewer, "view");
    TestCertificates certificates;
    certificates.trustAuthority();
    storm::LogWatch log;
    log.setEcho(arguments.options.hasLog);
    storm::objectcount::start();
    bool isGood = false;
    {
        storm::Storm run(arguments.options, log,
                         certificates.certified(QStringLiteral("DNS:localhost,IP:127.0.0.1")));
        QObject::connect(&run, &storm::Storm::finished, &application, &QApplication::quit);
        run.begin();
        QApplication::exec();
        isGood = run.isGood();
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    return isGood ? 0 : 1;
}

#include "main.moc"
