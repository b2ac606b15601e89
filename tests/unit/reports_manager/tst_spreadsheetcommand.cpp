#include "reportmanagerfixture.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

/// The command that writes the complete report as a spreadsheet.
class TstSpreadsheetCommand : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void fullStoreIsWritten();
    void storeThatIsNotFullIsRefused_data();
    void storeThatIsNotFullIsRefused();
    void boxIsLeftByItsButton();
    void refusalKeepsTheFolder();
    void cancelledDialogShowsNoBox();
    void folderThatIsGoneIsLoggedAndRemembered();
    void nothingChosenStillGivesAFile();
};

namespace {

const QString kRefusal = QStringLiteral("void ModuleConfigurationManager::createXlsxFile() : "
                                        "No configaration data available -> saving not possible");

} // namespace

void TstSpreadsheetCommand::fullStoreIsWritten()
{
    fill({reportrecords::module(1, 1), reportrecords::universalModule(2)});
    emit report().saveCSV();
    const QString path = folder() + QStringLiteral("/r.xlsx");
    saveAs(path);
    const QByteArray bytes = readFile(path);
    QVERIFY2(bytes.startsWith("PK\x03\x04"), bytes.left(8).toHex());
    QVERIFY(bytes.contains("xl/worksheets/sheet1.xml"));
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:", "DefltLctn|" + folder()}));
    QCOMPARE(openWindows<QMessageBox>(), 0);
    QCOMPARE(logged(), QStringList());
}

void TstSpreadsheetCommand::storeThatIsNotFullIsRefused_data()
{
    QTest::addColumn<int>("missing");
    QTest::newRow("no system status") << 0;
    QTest::newRow("no fast system status") << 1;
    QTest::newRow("no module status") << 2;
    QTest::newRow("no fast module status") << 3;
    QTest::newRow("only a module beyond the table") << 4;
}

void TstSpreadsheetCommand::storeThatIsNotFullIsRefused()
{
    QFETCH(int, missing);
    if (missing != 0)
        m_manager->Slot_SaveSystemStatus(QVariant::fromValue(reportrecords::system(1)));
    if (missing != 1)
        m_manager->Slot_SaveFastSystemStatus(QVariant::fromValue(Fast_System_Status()));
    if (missing < 2 || missing == 3)
        fileModule(reportrecords::module(1, 1));
    else if (missing == 4)
        fileModule(reportrecords::module(130, 1));
    if (missing != 3) {
        m_manager->Slot_SaveFastModuleStatus(
            QVariant::fromValue(QVector<Fast_Module_Status>{Fast_Module_Status()}));
    }
    m_log->clear();
    m_manager->displaySystemReport();
    emit report().saveCSV();
    QCOMPARE(openWindows<QMessageBox>(), 0); // the file is asked for first
    saveAs(folder() + QStringLiteral("/r.xlsx"));
    QCOMPARE(openWindows<QMessageBox>(), 1);
    auto *box = childByName<QMessageBox>(&report(), "notSavedBox");
    QCOMPARE(box->windowTitle(), QStringLiteral("Error"));
    QCOMPARE(box->text(), QStringLiteral("No configuration data available.\nSave not possibe!"));
    QCOMPARE(box->icon(), QMessageBox::Critical);
    QCOMPARE(box->standardButtons(), QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(box->isModal());
    QCOMPARE(files(), QStringList());
    QCOMPARE(m_log->lines(QtDebugMsg), QStringList{kRefusal});
    QCOMPARE(logged().size(), 1);
    QCOMPARE(m_events, QStringList{"debugMessage|save location:"});
}

void TstSpreadsheetCommand::boxIsLeftByItsButton()
{
    emit report().saveCSV();
    saveAs(folder() + QStringLiteral("/r.xlsx"));
    auto *box = childByName<QMessageBox>(&report(), "notSavedBox");
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    m_time->turn();
    QCOMPARE(report().findChildren<QMessageBox *>().size(), 0);
    QCOMPARE(files(), QStringList());
    emit report().saveCSV(); // and the next attempt begins anew
    QVERIFY(saveDialog().isVisible());
}

void TstSpreadsheetCommand::refusalKeepsTheFolder()
{
    const QString before = makeFolder(QStringLiteral("before"));
    m_manager->setPath(before);
    emit report().saveCSV();
    saveAs(folder() + QStringLiteral("/r.xlsx"));
    delete childByName<QMessageBox>(&report(), "notSavedBox");
    m_events.clear();
    emit report().saveCSV();
    QCOMPARE(m_events, QStringList{"debugMessage|save location:" + before});
}

void TstSpreadsheetCommand::cancelledDialogShowsNoBox()
{
    emit report().saveCSV();
    QTest::keyClick(childByName<QWidget>(&report(), "saveDialog"), Qt::Key_Escape);
    m_time->turn();
    QCOMPARE(openWindows<QDialog>(), 0);
    QCOMPARE(logged(), QStringList());
    QCOMPARE(m_events, QStringList{"debugMessage|save location:"});
}

void TstSpreadsheetCommand::folderThatIsGoneIsLoggedAndRemembered()
{
    fill({reportrecords::module(1, 1)});
    const QString gone = folder() + QStringLiteral("/gone");
    emit report().saveCSV();
    expectCritical(gone + QStringLiteral("/r.xlsx"));
    expectCritical(QStringLiteral("Error writing into CSV file"));
    saveAs(gone + QStringLiteral("/r.xlsx"));
    QCOMPARE(openWindows<QMessageBox>(), 0);
    QCOMPARE(files(), QStringList());
    QVERIFY(!QFile::exists(gone));
    QCOMPARE(m_events, (QStringList{"debugMessage|save location:", "DefltLctn|" + gone}));
}

void TstSpreadsheetCommand::nothingChosenStillGivesAFile()
{
    fill({reportrecords::module(1, 1)});
    m_manager->clearList();
    emit report().saveCSV();
    const QString path = folder() + QStringLiteral("/r.xlsx");
    saveAs(path);
    QVERIFY(readFile(path).startsWith("PK\x03\x04"));
    QCOMPARE(m_events.last(), "DefltLctn|" + folder());
}

QTEST_MAIN(TstSpreadsheetCommand)
#include "tst_spreadsheetcommand.moc"
