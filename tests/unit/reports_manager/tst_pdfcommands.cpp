#include "reportmanagerfixture.h"
#include "reports/sensormodel.h"

#include <QFileDialog>
#include <QPushButton>
#include <QtTest>

/// The commands that write a PDF and show it.
class TstPdfCommands : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void protocolIsShownBeforeTheFolderIsRemembered();
    void overviewIsShownAfterTheFolderIsRemembered();
    void noViewerIsTold();
    void fileThatWasNotWrittenIsNotShown();
    void failedReportLeavesTheFolderOfTheFileAsItIs();
    void pathWithBlanksQuotesAndUmlauts_data();
    void pathWithBlanksQuotesAndUmlauts();
    void overviewIsLogged();
    void overviewLeavesOutWhatIsNotMarked();
    void powerModuleWithoutRecordIsToldOncePerReport();
    void protocolOfAnyAddressIsAFile_data();
    void protocolOfAnyAddressIsAFile();
    void protocolTakesTheRecordsOfTheMomentOfSaving();
    void emptyStoreGivesFiles();
    void overviewTakesAsManyPagesAsItNeedsAndProtocolOne();
    void buttonOfTheDialogStartsTheCommand();

private:
    /// Number of pages of a PDF; 0 if the file does not tell.
    static int pages(const QString &path)
    {
        const QByteArray bytes = readFile(path);
        const int begin = bytes.indexOf("/Count ") + 7;
        return begin < 7 ? 0 : bytes.mid(begin, bytes.indexOf('\n', begin) - begin).toInt();
    }

    /// The page that the log has of the last overview.
    QString loggedPage() const
    {
        const QStringList lines = m_log->lines(QtDebugMsg).filter(QStringLiteral("HTML DOC"));
        return lines.isEmpty() ? QString() : lines.last();
    }
};

void TstPdfCommands::protocolIsShownBeforeTheFolderIsRemembered()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().savePDF(1);
    const QString path = folder() + QStringLiteral("/m.pdf");
    saveAs(path);
    QVERIFY(readFile(path).startsWith("%PDF-"));
    QCOMPARE(files(), QStringList{"m.pdf"});
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:", "open|" + path, "DefltLctn|" + folder()}));
    QCOMPARE(logged(), QStringList());
}

void TstPdfCommands::overviewIsShownAfterTheFolderIsRemembered()
{
    fill({reportrecords::oneListModule(1, 1)});
    emit report().saveAllPdf();
    const QString path = folder() + QStringLiteral("/s.pdf");
    saveAs(path);
    QVERIFY(readFile(path).startsWith("%PDF-"));
    QCOMPARE(files(), QStringList{"s.pdf"});
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:", "DefltLctn|" + folder(), "open|" + path}));
    QCOMPARE(critical(), QStringList());
}

void TstPdfCommands::noViewerIsTold()
{
    fill({reportrecords::oneListModule(1, 1)});
    loseViewers(2);
    const QString module = folder() + QStringLiteral("/m.pdf");
    emit report().savePDF(1);
    saveAs(module);
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:",
                                    "debugMessage|PDF open failed with file name:" + module + "\n",
                                    "DefltLctn|" + folder()}));
    QVERIFY(readFile(module).startsWith("%PDF-"));
    m_events.clear();
    const QString system = folder() + QStringLiteral("/s.pdf");
    emit report().saveAllPdf();
    saveAs(system);
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:" + folder(), "DefltLctn|" + folder(),
                                    "debugMessage|PDF open failed with file name:" + system + "\n"}));
    QVERIFY(readFile(system).startsWith("%PDF-"));
}

void TstPdfCommands::fileThatWasNotWrittenIsNotShown()
{
    fill({reportrecords::oneListModule(1, 1)});
    const QString gone = folder() + QStringLiteral("/gone");
    emit report().savePDF(1);
    expectCritical(gone + QStringLiteral("/m.pdf"));
    saveAs(gone + QStringLiteral("/m.pdf"));
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:",
                                    "debugMessage|PDF open failed with file name:" + gone + "/m.pdf\n",
                                    "DefltLctn|" + gone}));
    m_events.clear();
    emit report().saveAllPdf();
    expectCritical(gone + QStringLiteral("/s.pdf"));
    saveAs(gone + QStringLiteral("/s.pdf"));
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:" + gone, "DefltLctn|" + gone,
                                    "debugMessage|PDF open failed with file name:" + gone + "/s.pdf\n"}));
    QCOMPARE(files(), QStringList());
}

void TstPdfCommands::failedReportLeavesTheFolderOfTheFileAsItIs()
{
    // The chosen name is by now a folder: nothing can take its place.
    fill({reportrecords::oneListModule(1, 1)});
    m_manager->setPath(folder());
    emit report().savePDF(1);
    saveDialog().selectFile(QStringLiteral("m.pdf"));
    QVERIFY(QDir(folder()).mkpath(QStringLiteral("m.pdf/inside")));
    expectCritical(folder() + QStringLiteral("/m.pdf"));
    static_cast<QDialog &>(saveDialog()).done(QDialog::Accepted);
    QCOMPARE(m_events.value(1), "debugMessage|PDF open failed with file name:" + folder() + "/m.pdf\n");
    QCOMPARE(files(), QStringList()); // no temporary file is left
    QVERIFY(QFile::exists(folder() + QStringLiteral("/m.pdf/inside")));
}

void TstPdfCommands::pathWithBlanksQuotesAndUmlauts_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "a  b c";
    QTest::newRow("quotes") << "\"a\" 'b'";
    QTest::newRow("umlauts") << QStringLiteral("Prüfbericht ÄÖÜß");
    QTest::newRow("what addresses have") << "50%20 #1?x=1&y";
    QTest::newRow("markup") << "<b>";
    QTest::newRow("place marker") << "%1 %2";
}

void TstPdfCommands::pathWithBlanksQuotesAndUmlauts()
{
    QFETCH(QString, name);
    fill({reportrecords::oneListModule(1, 1)});
    const QString inside = makeFolder(name);
    const QString fileName = QString(name).remove('"'); // with it the dialog's field tells names apart
    const QString path = inside + '/' + fileName + QStringLiteral(".pdf");
    m_manager->setPath(inside);
    emit report().savePDF(1);
    saveAs(fileName);
    QVERIFY(readFile(path).startsWith("%PDF-"));
    QCOMPARE(m_events.mid(1), (QStringList{"open|" + path, "DefltLctn|" + inside}));
    loseViewers();
    emit report().saveAllPdf();
    const QString system = inside + '/' + fileName + QStringLiteral(" s.pdf");
    saveAs(fileName + QStringLiteral(" s"));
    QVERIFY(readFile(system).startsWith("%PDF-"));
    QCOMPARE(m_events.last(), "debugMessage|PDF open failed with file name:" + system + "\n");
}

void TstPdfCommands::overviewIsLogged()
{
    fill({reportrecords::module(1, 3)});
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/s.pdf"));
    QCOMPARE(m_log->lines(QtDebugMsg).size(), 1);
    const QString page = loggedPage();
    QVERIFY2(page.startsWith(QStringLiteral("HTML DOC \n")), qPrintable(page.left(40)));
    for (const char *part : {"&nbsp;s.pdf<br>&nbsp;Date:&nbsp;02/03/2026&nbsp; Time:&nbsp;08:30:00&nbsp; "
                             "VXConfig Version:&nbsp;1.1.62&nbsp; OS Version:&nbsp;Test OS 5<br>",
                             "<td>0</td><td>Controller</td>", "<td>1</td><td>IEPE_ICP</td>", "</html>"})
        QVERIFY2(page.contains(QLatin1String(part)), qPrintable(page));
}

void TstPdfCommands::overviewLeavesOutWhatIsNotMarked()
{
    fill({reportrecords::module(1, 1), reportrecords::module(2, 2), reportrecords::module(3, 3)});
    table().setData(table().index(2, SensorModel::MarkColumn), Qt::Unchecked, Qt::CheckStateRole);
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/s.pdf"));
    QVERIFY(loggedPage().contains(QStringLiteral("<td>0</td><td>Controller</td>")));
    QVERIFY(loggedPage().contains(QStringLiteral("<td>1</td><td>Strain Gauge</td>")));
    QVERIFY(!loggedPage().contains(QStringLiteral("<td>2</td>")));
    QVERIFY(loggedPage().contains(QStringLiteral("<td>3</td><td>IEPE_ICP</td>")));

    m_manager->clearList();
    m_log->clear();
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/none.pdf"));
    QVERIFY(!loggedPage().isEmpty());
    QVERIFY(!loggedPage().contains(QStringLiteral("<td>")));
}

void TstPdfCommands::powerModuleWithoutRecordIsToldOncePerReport()
{
    fill({reportrecords::module(1, 1)});
    System_Status system = reportrecords::system(1);
    system.sModules[9] = 120;
    m_manager->Slot_SaveSystemStatus(QVariant::fromValue(system));
    Module_Status power = reportrecords::power();
    power.serialNumber.clear();
    fileModule(power);
    for (int report = 1; report <= 2; ++report) {
        emit this->report().saveAllPdf();
        saveAs(folder() + QStringLiteral("/%1.pdf").arg(report));
        QCOMPARE(m_log->lines(QtDebugMsg).count(QStringLiteral("Power Module Empty")), report);
        QVERIFY(!loggedPage().contains(QStringLiteral("<td>129</td>")));
    }
    fileModule(reportrecords::power());
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/3.pdf"));
    QCOMPARE(m_log->lines(QtDebugMsg).count(QStringLiteral("Power Module Empty")), 2);
    QVERIFY(loggedPage().contains(QStringLiteral("<td>129</td><td>Power</td><td>000077129</td>")));
}

void TstPdfCommands::protocolOfAnyAddressIsAFile_data()
{
    QTest::addColumn<int>("address");
    for (const int address : {0, 9, 12, 13, 128, 129, 130, 255})
        QTest::addRow("%d", address) << address;
}

void TstPdfCommands::protocolOfAnyAddressIsAFile()
{
    QFETCH(int, address);
    const StatusStore chain = reportrecords::chain();
    for (int i = 0; i <= 12; ++i)
        fileModule(chain.module(i));
    emit report().savePDF(static_cast<uchar>(address));
    saveAs(folder() + QStringLiteral("/m.pdf"));
    QVERIFY(readFile(folder() + QStringLiteral("/m.pdf")).startsWith("%PDF-"));
    QCOMPARE(critical(), QStringList());
}

void TstPdfCommands::protocolTakesTheRecordsOfTheMomentOfSaving()
{
    fill({reportrecords::module(1, 1)});
    emit report().saveAllPdf();
    fileModule(reportrecords::module(1, 7)); // while the dialog asks
    m_time->advance(60000);
    saveAs(folder() + QStringLiteral("/s.pdf"));
    QVERIFY(loggedPage().contains(QStringLiteral("<td>1</td><td>4_20</td>")));
    QVERIFY(loggedPage().contains(QStringLiteral("&nbsp; Time:&nbsp;08:31:00&nbsp; ")));
}

void TstPdfCommands::emptyStoreGivesFiles()
{
    emit report().savePDF(report().firstChecked());
    saveAs(folder() + QStringLiteral("/m.pdf"));
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/s.pdf"));
    QVERIFY(readFile(folder() + QStringLiteral("/m.pdf")).startsWith("%PDF-"));
    QVERIFY(readFile(folder() + QStringLiteral("/s.pdf")).startsWith("%PDF-"));
}

void TstPdfCommands::overviewTakesAsManyPagesAsItNeedsAndProtocolOne()
{
    QVector<Module_Status> modules;
    for (quint8 address = 1; address <= 128; ++address)
        modules.append(reportrecords::universalModule(address));
    modules[0].sensorList = QStringLiteral("item$").repeated(2000);
    fill(modules);
    emit report().saveAllPdf();
    saveAs(folder() + QStringLiteral("/s.pdf"));
    emit report().savePDF(1);
    saveAs(folder() + QStringLiteral("/m.pdf"));
    QVERIFY(pages(folder() + QStringLiteral("/s.pdf")) > 1);
    QCOMPARE(pages(folder() + QStringLiteral("/m.pdf")), 1);
}

void TstPdfCommands::buttonOfTheDialogStartsTheCommand()
{
    fill({reportrecords::module(1, 1)});
    m_manager->displaySystemReport();
    QTest::mouseClick(childByName<QPushButton>(&report(), "saveAllPdf"), Qt::LeftButton);
    const QString path = folder() + QStringLiteral("/s.pdf");
    saveAs(path);
    QCOMPARE(m_events.last(), "open|" + path);
    QVERIFY(report().isVisible());
}

QTEST_MAIN(TstPdfCommands)
#include "tst_pdfcommands.moc"
