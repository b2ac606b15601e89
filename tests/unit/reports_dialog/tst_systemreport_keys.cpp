#include "reportdialog.h"
#include "support/dialoglook.h"
#include "support/messagecatcher.h"
#include "support/windowacts.h"

#include <QScrollBar>

/// The dialog by keyboard, and what a running program may do to its table meanwhile.
class TstSystemReportKeys : public QObject
{
    Q_OBJECT

private slots:
    void tabFollowsTheReadingOrder_data();
    void tabFollowsTheReadingOrder();
    void arrowsChooseTheKind();
    void returnMakesNoReport();
    void escapeLeavesTheDialog();

    void tableShowsItsCurrentRow();
    void focusByMouseDoesNotScroll();
    void spaceClicksTheCurrentRow_data();
    void spaceClicksTheCurrentRow();
    void spaceMarksOneModule();
    void spaceInTheCompleteKindChangesNothing();
    void heldSpaceTogglesOnce();
    void spaceInAnEmptyTableDoesNothing();
    void arrowsReachTheLastRow();
    void lettersChangeNoMark();

    void newRowsLeaveTheCurrentRowInView();
    void marksLeaveTheCurrentRowInView();
    void tableThatWasClearedCanBeUsedAgain();
    void tabLeavesAClearedTable();
    void rowsForAnEmptyTableTakeNoFocus();
};

namespace {

/// The table has the focus, as if Tab had brought it.
void tabToTable(const ReportDialog &d)
{
    d.table()->setFocus(Qt::TabFocusReason);
}

int currentRow(const ReportDialog &d)
{
    return d.table()->currentIndex().row();
}

bool isInView(const ReportDialog &d, int row)
{
    const QRect cell = d.table()->visualRect(d.table()->model()->index(row, 1));
    return d.table()->viewport()->rect().contains(cell);
}

} // namespace

void TstSystemReportKeys::tabFollowsTheReadingOrder_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QString>("order");
    QTest::newRow("concise") << QByteArray("systemPDFcheckBox")
                             << "tableView systemPDFcheckBox saveAllPdf selectionCB";
    QTest::newRow("complete") << QByteArray("systemExcelCheckbox")
                              << "tableView systemExcelCheckbox saveCsvBtn";
    QTest::newRow("module") << QByteArray("oneModuleCheckbox")
                            << "tableView oneModuleCheckbox openInFile printBtn savePDF toClipbrdBtn";
}

void TstSystemReportKeys::tabFollowsTheReadingOrder()
{
    QFETCH(QByteArray, kind);
    for (const int rows : {0, 130}) {
        ReportDialog d(rows);
        d.button(kind.constData())->click();
        tabToTable(d);
        QTEST(dialoglook::tabOrder(d.dialog).join(QLatin1Char(' ')), "order");
        QTest::keyClick(d.table(), Qt::Key_Backtab);
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Tab);
        QCOMPARE(d.dialog.focusWidget(), d.table());
    }
}

void TstSystemReportKeys::arrowsChooseTheKind()
{
    const ReportDialog d(3);
    d.button("systemPDFcheckBox")->setFocus();
    QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Down);
    QCOMPARE(d.dialog.focusWidget(), d.button("oneModuleCheckbox"));
    QVERIFY(d.button("oneModuleCheckbox")->isChecked());
    QVERIFY(d.button("printBtn")->isEnabled());
    QCOMPARE(d.marks(), QStringLiteral("x--"));
    QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Up);
    QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Up);
    QCOMPARE(d.dialog.focusWidget(), d.button("systemExcelCheckbox"));
    QVERIFY(d.button("saveCsvBtn")->isEnabled());
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
}

void TstSystemReportKeys::returnMakesNoReport()
{
    const ReportDialog d(3);
    d.button("oneModuleCheckbox")->click();
    for (const char *signal : {SIGNAL(saveCSV()), SIGNAL(saveAllPdf()), SIGNAL(clipboardCopy(uchar)),
                               SIGNAL(openInFile(uchar)), SIGNAL(printSens(uchar)), SIGNAL(savePDF(uchar))}) {
        const QSignalSpy spy(&d.dialog, signal);
        for (const char *name : {"tableView", "oneModuleCheckbox", "printBtn", "savePDF"}) {
            childByName<QWidget>(&d.dialog, name)->setFocus();
            QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Return);
            QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Enter);
        }
        QCOMPARE(spy.size(), 0);
    }
    QVERIFY(d.dialog.isVisible());
    QCOMPARE(d.marks(), QStringLiteral("x--"));
}

void TstSystemReportKeys::escapeLeavesTheDialog()
{
    ReportDialog d(3);
    for (const char *name : {"tableView", "systemPDFcheckBox", "saveAllPdf"}) {
        d.dialog.show();
        childByName<QWidget>(&d.dialog, name)->setFocus();
        QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Escape);
        QVERIFY(!d.dialog.isVisible());
    }
    QCOMPARE(d.marks(), QStringLiteral("xxx")); // it is not deleted, and keeps what was chosen
}

void TstSystemReportKeys::tableShowsItsCurrentRow()
{
    const ReportDialog d(3);
    const auto rowLooks = [&d](int row) {
        const QPoint free = d.table()->visualRect(d.table()->model()->index(row, 2)).bottomRight();
        return d.table()->viewport()->grab().toImage().pixelColor(free - QPoint(8, 4));
    };
    const QColor plain = rowLooks(2);
    tabToTable(d);
    QCOMPARE(currentRow(d), 0);
    QVERIFY(rowLooks(0) != plain);
    QTest::keyClick(d.table(), Qt::Key_Down);
    QCOMPARE(rowLooks(0), plain);
    QVERIFY(rowLooks(1) != plain);
    d.button("saveAllPdf")->setFocus(); // there it would pass for a chosen one
    QCOMPARE(rowLooks(1), plain);
    QCOMPARE(currentRow(d), 1);
    tabToTable(d);
    QVERIFY(rowLooks(1) != plain);
}

void TstSystemReportKeys::focusByMouseDoesNotScroll()
{
    const ReportDialog d(130);
    d.table()->scrollToBottom();
    const int top = d.table()->verticalScrollBar()->value();
    d.clickCell(129, 1);
    QCOMPARE(d.table()->verticalScrollBar()->value(), top);
    QCOMPARE(d.marks(), QString(129, QLatin1Char('x')) + QLatin1Char('-'));
}

void TstSystemReportKeys::spaceClicksTheCurrentRow_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("mark") << 0;
    QTest::newRow("type") << 1;
    QTest::newRow("serial number") << 2;
}

void TstSystemReportKeys::spaceClicksTheCurrentRow()
{
    QFETCH(int, column);
    const ReportDialog d(3);
    tabToTable(d);
    QTest::keyClick(d.table(), Qt::Key_Down);
    for (int i = 0; i < column; ++i)
        QTest::keyClick(d.table(), Qt::Key_Right);
    QCOMPARE(d.table()->currentIndex().column(), column);
    const QSignalSpy changed(d.table()->model(), &QAbstractItemModel::dataChanged);
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("x-x"));
    QCOMPARE(changed.size(), 1);
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
    QCOMPARE(currentRow(d), 1);
}

void TstSystemReportKeys::spaceMarksOneModule()
{
    const ReportDialog d(3);
    d.button("oneModuleCheckbox")->click();
    tabToTable(d);
    QTest::keyClick(d.table(), Qt::Key_Down);
    QTest::keyClick(d.table(), Qt::Key_Down);
    QCOMPARE(d.marks(), QStringLiteral("x--")); // walking marks nothing
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("--x"));
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("--x"));
}

void TstSystemReportKeys::spaceInTheCompleteKindChangesNothing()
{
    const ReportDialog d(2);
    d.button("systemExcelCheckbox")->click();
    tabToTable(d);
    MessageCatcher log;
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("xx"));
    QCOMPARE(log.lines(QtDebugMsg), QStringList{QStringLiteral("Mode Not Defined")});
}

void TstSystemReportKeys::heldSpaceTogglesOnce()
{
    const ReportDialog d(2);
    tabToTable(d);
    QTest::keyPress(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("-x"));
    for (int i = 0; i < 3; ++i) {
        windowacts::repeatKey(Qt::Key_Space, QStringLiteral(" "));
        QCOMPARE(d.marks(), QStringLiteral("-x"));
    }
    QTest::keyRelease(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("-x"));
    // Held down since before it was open, the key acts on nothing else either.
    d.button("saveAllPdf")->setFocus();
    const QSignalSpy saved(&d.dialog, &SystemReport::saveAllPdf);
    windowacts::repeatKey(Qt::Key_Space, QStringLiteral(" "));
    QTest::keyRelease(d.dialog.focusWidget(), Qt::Key_Space);
    QCOMPARE(saved.size(), 0);
}

void TstSystemReportKeys::spaceInAnEmptyTableDoesNothing()
{
    const ReportDialog d;
    tabToTable(d);
    MessageCatcher log;
    for (const char *kind : {"systemPDFcheckBox", "systemExcelCheckbox", "oneModuleCheckbox"}) {
        d.button(kind)->click();
        QTest::keyClick(d.table(), Qt::Key_Space);
        QTest::keyClick(d.table(), Qt::Key_Down);
    }
    QCOMPARE(log.lines(QtDebugMsg), QStringList());
    QCOMPARE(d.dialog.focusWidget(), d.table());
}

void TstSystemReportKeys::arrowsReachTheLastRow()
{
    const ReportDialog d(130);
    tabToTable(d);
    QTest::keyClick(d.table(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(currentRow(d), 129);
    QVERIFY(isInView(d, 129));
    QTest::keyClick(d.table(), Qt::Key_Space);
    QVERIFY(!d.dialog.isSelected(129));
    QTest::keyClick(d.table(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(currentRow(d), 0);
    QVERIFY(isInView(d, 0));
}

void TstSystemReportKeys::lettersChangeNoMark()
{
    const ReportDialog d(3);
    tabToTable(d);
    QTest::keyClicks(d.table(), QStringLiteral("voltage2300"));
    QTest::keyClick(d.table(), Qt::Key_F2);
    QTest::keyClick(d.table(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(d.table(), Qt::Key_Delete);
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
    QCOMPARE(d.table()->model()->index(0, 1).data().toString(), QStringLiteral("Voltage"));
}

void TstSystemReportKeys::newRowsLeaveTheCurrentRowInView()
{
    ReportDialog d(100);
    tabToTable(d);
    d.table()->setCurrentIndex(d.table()->model()->index(60, 1));
    const int top = d.table()->verticalScrollBar()->value();
    QVERIFY(top > 0);
    d.addRows(30, 100);
    QCOMPARE(currentRow(d), 60);
    QCOMPARE(d.table()->verticalScrollBar()->value(), top);
    QCOMPARE(d.dialog.focusWidget(), d.table());
    QTest::keyClick(d.table(), Qt::Key_Down);
    QCOMPARE(currentRow(d), 61);
}

void TstSystemReportKeys::marksLeaveTheCurrentRowInView()
{
    const ReportDialog d(130);
    d.table()->setCurrentIndex(d.table()->model()->index(60, 1));
    const int top = d.table()->verticalScrollBar()->value();
    for (const char *kind : {"systemExcelCheckbox", "oneModuleCheckbox", "systemPDFcheckBox"}) {
        d.click(kind);
        QCOMPARE(currentRow(d), 60);
        QCOMPARE(d.table()->verticalScrollBar()->value(), top);
    }
    d.click("selectionCB");
    QCOMPARE(currentRow(d), 60);
    QCOMPARE(d.table()->verticalScrollBar()->value(), top);
}

void TstSystemReportKeys::tableThatWasClearedCanBeUsedAgain()
{
    ReportDialog d(130);
    tabToTable(d);
    d.table()->setCurrentIndex(d.table()->model()->index(60, 0));
    d.dialog.clear();
    QCOMPARE(d.dialog.focusWidget(), d.table());
    QVERIFY(!d.table()->currentIndex().isValid());
    QTest::keyClick(d.table(), Qt::Key_Space);
    d.addRows(3);
    QCOMPARE(currentRow(d), 0);
    QVERIFY(isInView(d, 0));
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("-xx"));
    QTest::keyClick(d.table(), Qt::Key_Down);
    QTest::keyClick(d.table(), Qt::Key_Space);
    QCOMPARE(d.marks(), QStringLiteral("--x"));
}

void TstSystemReportKeys::tabLeavesAClearedTable()
{
    ReportDialog d(3);
    tabToTable(d);
    d.dialog.clear();
    QTest::keyClick(d.table(), Qt::Key_Tab);
    QCOMPARE(d.dialog.focusWidget(), d.button("systemPDFcheckBox"));
    QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Backtab);
    QCOMPARE(d.dialog.focusWidget(), d.table());
}

void TstSystemReportKeys::rowsForAnEmptyTableTakeNoFocus()
{
    ReportDialog d;
    d.button("saveAllPdf")->setFocus();
    d.addRows(3);
    d.dialog.clear();
    d.addRows(3);
    QCOMPARE(d.dialog.focusWidget(), d.button("saveAllPdf"));
}

QTEST_MAIN(TstSystemReportKeys)
#include "tst_systemreport_keys.moc"
