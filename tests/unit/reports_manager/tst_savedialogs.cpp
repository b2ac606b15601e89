#include "reportmanagerfixture.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

/// How the user is asked for a file before a report is written: the same for all three kinds of file.
class TstSaveDialogs : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void dialogAsksForAFile_data();
    void dialogAsksForAFile();
    void proposalOfAModule_data();
    void proposalOfAModule();
    void proposalTakesTheTimeOfTheCommand();
    void folderFromTheSettingsIsShown_data();
    void folderFromTheSettingsIsShown();
    void folderThatIsGoneStillGivesAName();
    void emptyAnswerDoesNothing_data();
    void emptyAnswerDoesNothing();
    void suffixIsCompleted_data();
    void suffixIsCompleted();
    void folderIsRememberedForTheNextProposal_data();
    void folderIsRememberedForTheNextProposal();
    void earlierFileIsReplacedOnlyIfTheUserSaysSo_data();
    void earlierFileIsReplacedOnlyIfTheUserSaysSo();
    void dialogBelongsToTheReportDialogAndGoesWithIt();

private:
    /// Starts a command as the dialog does.
    void start(const QString &command, uchar address = 1)
    {
        if (command == QLatin1String("module"))
            emit report().savePDF(address);
        else if (command == QLatin1String("system"))
            emit report().saveAllPdf();
        else
            emit report().saveCSV();
    }
};

namespace {

/// Answers the question that is on the screen.
void answer(QMessageBox::StandardButton button)
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box)
        qFatal("There is no question");
    QTest::mouseClick(box->button(button), Qt::LeftButton);
}

void addCommands()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("proposal");
    QTest::newRow("PDF of a module") << "module"
                                     << "pdf"
                                     << "20260302083000_000000771_VX_STGX_";
    QTest::newRow("PDF of the system") << "system"
                                       << "pdf"
                                       << "20260302083000_VX_SystemReport_";
    QTest::newRow("spreadsheet") << "sheet"
                                 << "xlsx"
                                 << "20260302083000_VX_SystemReport_";
}

} // namespace

void TstSaveDialogs::dialogAsksForAFile_data()
{
    addCommands();
}

void TstSaveDialogs::dialogAsksForAFile()
{
    QFETCH(QString, command);
    QFETCH(QString, suffix);
    fill({reportrecords::module(1, 1)});
    start(command);
    QVERIFY(saveDialog().isVisible());
    QVERIFY(saveDialog().isModal());
    QCOMPARE(saveDialog().windowTitle(), QStringLiteral("Save Configuration to File"));
    QCOMPARE(saveDialog().acceptMode(), QFileDialog::AcceptSave);
    QCOMPARE(saveDialog().nameFilters(), QStringList{QStringLiteral("(*.%1)").arg(suffix)});
    QTEST(proposedName(), "proposal");
    QCOMPARE(m_events, QStringList{"debugMessage|save location:"});
    QCOMPARE(files(), QStringList());
}

void TstSaveDialogs::proposalOfAModule_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("serialNumber");
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << 1 << 9 << "12 34"
                            << "20260302083000_000001234_VX_Analog_";
    QTest::newRow("slashes") << 1 << 4 << "../a/b"
                             << "20260302083000_000___a_b_VX_THERMO_";
    QTest::newRow("markup") << 2 << 2 << "<\"1\">"
                            << "20260302083000_0000__1___VX_VOLT_";
    QTest::newRow("umlauts") << 2 << 3 << QStringLiteral("ü 1'")
                             << QStringLiteral("20260302083000_000000ü1'_VX_IEPE_ICP_");
    QTest::newRow("controller") << 0 << 100 << "5"
                                << "20260302083000_000000005_VX_CONT_";
    QTest::newRow("power module") << 129 << 120 << "5"
                                  << "20260302083000_000000005_VX_POWER_";
}

void TstSaveDialogs::proposalOfAModule()
{
    QFETCH(int, address);
    QFETCH(int, type);
    QFETCH(QString, serialNumber);
    Module_Status module = reportrecords::module(static_cast<quint8>(address), static_cast<quint8>(type));
    module.serialNumber = serialNumber;
    fileModule(module);
    m_manager->setPath(folder());
    emit report().savePDF(static_cast<uchar>(address));
    QTEST(proposedName(), "name");
    QCOMPARE(QDir(saveDialog().directory()).canonicalPath(), QDir(folder()).canonicalPath());
}

void TstSaveDialogs::proposalTakesTheTimeOfTheCommand()
{
    m_time->advance(std::chrono::hours(15) + std::chrono::seconds(1));
    emit report().saveAllPdf();
    QCOMPARE(proposedName(), QStringLiteral("20260302233001_VX_SystemReport_"));
    saveDialog().reject();
    m_time->turn();
    m_time->advance(1000);
    emit report().savePDF(7);
    QCOMPARE(proposedName(), QStringLiteral("20260302233002_000000000_VX_UNKNWN0_"));
}

void TstSaveDialogs::folderFromTheSettingsIsShown_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("name");
    for (const char *command : {"module", "system", "sheet"}) {
        QTest::addRow("%s, plain", command) << command << "reports";
        QTest::addRow("%s, blanks, quotes and umlauts", command)
            << command << QStringLiteral("Prüf \"Berichte\" d'été & mehr");
    }
}

void TstSaveDialogs::folderFromTheSettingsIsShown()
{
    QFETCH(QString, command);
    QFETCH(QString, name);
    const QString path = makeFolder(name);
    m_manager->setPath(path);
    QCOMPARE(m_events, QStringList());
    start(command);
    QCOMPARE(m_events, QStringList{"debugMessage|save location:" + path});
    QCOMPARE(saveDialog().directory().canonicalPath(), QDir(path).canonicalPath());
    QVERIFY2(proposedName().startsWith(QStringLiteral("20260302083000_")), qPrintable(proposedName()));
}

void TstSaveDialogs::folderThatIsGoneStillGivesAName()
{
    const QString path = folder() + QStringLiteral("/gone");
    m_manager->setPath(path);
    emit report().saveAllPdf();
    QCOMPARE(m_events, QStringList{"debugMessage|save location:" + path});
    QCOMPARE(proposedName(), QStringLiteral("20260302083000_VX_SystemReport_"));
    QVERIFY(saveDialog().directory().exists());
}

void TstSaveDialogs::emptyAnswerDoesNothing_data()
{
    addCommands();
}

void TstSaveDialogs::emptyAnswerDoesNothing()
{
    QFETCH(QString, command);
    QFETCH(QString, proposal);
    fill({reportrecords::module(1, 1)});
    const QString path = makeFolder(QStringLiteral("reports"));
    m_manager->setPath(path);
    start(command);
    QTest::keyClick(&saveDialog(), Qt::Key_Escape);
    m_time->turn();
    QCOMPARE(openWindows<QDialog>(), 0);
    QCOMPARE(report().findChildren<QFileDialog *>().size(), 0);
    QCOMPARE(m_events, QStringList{"debugMessage|save location:" + path});
    QCOMPARE(files(), QStringList());
    QCOMPARE(logged(), QStringList());
    start(command); // the folder is still the one of the settings
    QCOMPARE(m_events.last(), "debugMessage|save location:" + path);
    QCOMPARE(proposedName(), proposal);
}

void TstSaveDialogs::suffixIsCompleted_data()
{
    addCommands();
}

void TstSaveDialogs::suffixIsCompleted()
{
    QFETCH(QString, command);
    QFETCH(QString, suffix);
    QFETCH(QString, proposal);
    fill({reportrecords::module(1, 1)});
    m_manager->setPath(folder());
    start(command);
    saveAs(proposedName()); // as proposed
    QCOMPARE(files(), QStringList{proposal + '.' + suffix});
    start(command);
    saveAs(QStringLiteral("mine.") + suffix);
    QCOMPARE(files().size(), 2);
    QVERIFY(files().contains(QStringLiteral("mine.") + suffix));
}

void TstSaveDialogs::folderIsRememberedForTheNextProposal_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("name");
    for (const char *command : {"module", "system", "sheet"}) {
        const QString suffix = QLatin1String(command) == QLatin1String("sheet") ? "xlsx" : "pdf";
        QTest::addRow("%s, plain", command) << command << suffix << "reports";
        QTest::addRow("%s, blanks, quotes and umlauts", command)
            << command << suffix << QStringLiteral("Prüf \"Berichte\" d'été & mehr");
    }
}

void TstSaveDialogs::folderIsRememberedForTheNextProposal()
{
    QFETCH(QString, command);
    QFETCH(QString, suffix);
    QFETCH(QString, name);
    fill({reportrecords::module(1, 1)});
    const QString path = makeFolder(name);
    const QString file = QStringLiteral("d'été & mehr.") + suffix;
    m_manager->setPath(path);
    start(command);
    saveAs(file);
    QVERIFY(QFile::exists(path + '/' + file));
    QCOMPARE(files(), QStringList{file});
    QCOMPARE(m_events.count("DefltLctn|" + path), 1);
    for (const char *next : {"module", "system", "sheet"}) {
        m_events.clear();
        start(next);
        QCOMPARE(m_events, QStringList{"debugMessage|save location:" + path});
        QCOMPARE(saveDialog().directory().canonicalPath(), QDir(path).canonicalPath());
        saveDialog().reject();
        m_time->turn();
    }
}

void TstSaveDialogs::earlierFileIsReplacedOnlyIfTheUserSaysSo_data()
{
    addCommands();
}

void TstSaveDialogs::earlierFileIsReplacedOnlyIfTheUserSaysSo()
{
    QFETCH(QString, command);
    QFETCH(QString, suffix);
    fill({reportrecords::module(1, 1)});
    const QString path = folder() + QStringLiteral("/mine.") + suffix;
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("earlier"), qint64(7));
    file.close();
    start(command);
    saveAs(path, [] { answer(QMessageBox::No); });
    QVERIFY(saveDialog().isVisible());
    QCOMPARE(readFile(path), QByteArray("earlier"));
    QCOMPARE(m_events.size(), 1);
    saveAs(path, [] { answer(QMessageBox::Yes); });
    QCOMPARE(openWindows<QFileDialog>(), 0);
    QVERIFY(readFile(path) != QByteArray("earlier"));
    QVERIFY(m_events.contains("DefltLctn|" + folder()));
    QCOMPARE(files().size(), 1);
}

void TstSaveDialogs::dialogBelongsToTheReportDialogAndGoesWithIt()
{
    emit report().saveAllPdf();
    const QPointer<QFileDialog> dialog(&saveDialog());
    m_manager.reset();
    QVERIFY(dialog.isNull());
    QCOMPARE(files(), QStringList());
}

QTEST_MAIN(TstSaveDialogs)
#include "tst_savedialogs.moc"
