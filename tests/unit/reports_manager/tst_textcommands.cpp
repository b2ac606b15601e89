#include "reportmanagerfixture.h"

#include <QClipboard>
#include <QDir>
#include <QtTest>

/// The commands that hand a module's line to the clipboard and to a text file.
class TstTextCommands : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void clipboardGetsTheLine_data();
    void clipboardGetsTheLine();
    void clipboardLineIsLogged();
    void fileGetsTheLineAndIsShown();
    void fileOfBeforeIsReplaced();
    void specialCharactersReachTheFileAsUtf8();
    void desktopFolderThatIsGoneStillShowsTheFile();
    void desktopFolderWithBlanksQuotesAndUmlauts();
    void noViewerLeavesTheFile();

private:
    QString textFile() const { return desktopFolder() + QStringLiteral("/temp.txt"); }
};

namespace {

const QString kControllerLine = QStringLiteral("  0  Controller  12 34  HW0  MAIN0  FPGA0  24.12  25.5  0  0"
                                               "  1  Fixed  PCM  FM  1000 Hz  5000 kbit/s (16).\n");
const QString kModuleLine =
    QStringLiteral("  1  Strain Gauge  77 1  HW1  MAIN1  FPGA1  24  25  0  3"
                   "  0  1  2  oa1  fa1  0  0  0  ob1  fb1  0  Full$Half$  2$5$10$.\n");

} // namespace

void TstTextCommands::clipboardGetsTheLine_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("line");
    QTest::newRow("controller") << 0 << kControllerLine;
    QTest::newRow("module") << 1 << kModuleLine;
    QTest::newRow("255") << 255
                         << "  255  unknown0          0  -55  0  0  0  0  0      0  0  0      0    .\n";
}

void TstTextCommands::clipboardGetsTheLine()
{
    QFETCH(int, address);
    fill({reportrecords::oneListModule(1, 1)});
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    emit report().clipboardCopy(static_cast<uchar>(address));
    QTEST(QGuiApplication::clipboard()->text(), "line");
    QCOMPARE(m_events, QStringList());
    QCOMPARE(files(), QStringList());
    QCOMPARE(openWindows<QDialog>(), 0);
}

void TstTextCommands::clipboardLineIsLogged()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().clipboardCopy(1);
    QCOMPARE(logged().size(), 1);
    QVERIFY2(m_log->lines(QtDebugMsg).value(0).contains(kModuleLine.trimmed()),
             qPrintable(logged().join('|')));
}

void TstTextCommands::fileGetsTheLineAndIsShown()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().openInFile(1);
    QCOMPARE(QString::fromUtf8(readFile(textFile())), kModuleLine);
    QCOMPARE(files(), QStringList{"temp.txt"});
    QCOMPARE(m_events, QStringList{"open|" + textFile()});
    QCOMPARE(openWindows<QDialog>(), 0);
    QCOMPARE(logged(), QStringList());
}

void TstTextCommands::fileOfBeforeIsReplaced()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().openInFile(1);
    emit report().openInFile(0); // a shorter line
    QCOMPARE(QString::fromUtf8(readFile(textFile())), kControllerLine);
    QCOMPARE(m_events, (QStringList{"open|" + textFile(), "open|" + textFile()}));
    QCOMPARE(files(), QStringList{"temp.txt"});
}

void TstTextCommands::specialCharactersReachTheFileAsUtf8()
{
    Module_Status module = reportrecords::module(1, 2);
    module.serialNumber = QStringLiteral("ü<&\"'%1€");
    fill({module});
    emit report().openInFile(1);
    QVERIFY(readFile(textFile()).startsWith("  1  Voltage  \xC3\xBC<&\"'%1\xE2\x82\xAC  HW1  MAIN1  "));
    emit report().clipboardCopy(1);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(
        QStringLiteral("  1  Voltage  ü<&\"'%1€  HW1  MAIN1  ")));
}

void TstTextCommands::desktopFolderThatIsGoneStillShowsTheFile()
{
    QVERIFY(QDir(desktopFolder()).removeRecursively());
    fill({reportrecords::oneListModule(1, 1)});
    expectCritical(textFile());
    emit report().openInFile(1);
    QCOMPARE(readFile(textFile()), QByteArray("absent"));
    QCOMPARE(m_events, QStringList{"open|" + textFile()});
    QVERIFY(!QFile::exists(desktopFolder()));
}

void TstTextCommands::desktopFolderWithBlanksQuotesAndUmlauts()
{
    const QString desktop = makeFolder(QStringLiteral("Süd \"Tisch\" d'été %1 #2"));
    ModuleConfigurationManager manager({*m_time, QString(), QString(), desktop});
    manager.openNotepad(0);
    QVERIFY(readFile(desktop + QStringLiteral("/temp.txt")).startsWith("  0  unknown0  "));
    QCOMPARE(m_events, QStringList{"open|" + desktop + "/temp.txt"});
}

void TstTextCommands::noViewerLeavesTheFile()
{
    loseViewers();
    fill({reportrecords::oneListModule(1, 1)});
    expectCritical(textFile());
    emit report().openInFile(1);
    QCOMPARE(QString::fromUtf8(readFile(textFile())), kModuleLine);
    QCOMPARE(m_events, QStringList());
}

QTEST_MAIN(TstTextCommands)
#include "tst_textcommands.moc"
