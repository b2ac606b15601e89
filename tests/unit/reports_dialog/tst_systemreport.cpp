#include "reportdialog.h"
#include "support/messagecatcher.h"

/// What the kinds of report, the table, "Select All" and the buttons do.
class TstSystemReport : public QObject
{
    Q_OBJECT

private slots:
    void startsAsConcise();
    void kindSetsTheControls_data();
    void kindSetsTheControls();
    void kindThatIsChosenSetsItsMarksAgain_data();
    void kindThatIsChosenSetsItsMarksAgain();
    void kindsAreExclusive();
    void unknownButtonIsNoKind();

    void clickTogglesOnce_data();
    void clickTogglesOnce();
    void everyClickOfADoubleClickToggles();
    void otherClicksToggleNothing();
    void clickMarksOneModule();
    void clickInTheCompleteKindChangesNothing();

    void selectAllMarksAllOrNone();
    void selectAllFollowsTheTable();
    void selectAllOfAnEmptyTableStaysOff();
    void hiddenSelectAllDoesNothing_data();
    void hiddenSelectAllDoesNothing();

    void buttonTellsItsWish_data();
    void buttonTellsItsWish();
    void withoutAMarkTheModuleIsTheController();
    void printingIsLogged();

    void newRowIsCheckedInEveryKind_data();
    void newRowIsCheckedInEveryKind();
    void knownModuleNeedsNoMark();
    void clearedTableFillsAgain();
};

namespace {

struct Kind
{
    const char *box;
    bool selectsAll;
    bool ofOneModule;
    bool savesPdf;
    bool savesSheet;
};

const Kind kConcise{"systemPDFcheckBox", true, false, true, false};
const Kind kComplete{"systemExcelCheckbox", false, false, false, true};
const Kind kModule{"oneModuleCheckbox", false, true, false, false};

/// True if the controls are those of the kind, and no other one is checked.
bool shows(const ReportDialog &d, const Kind &kind)
{
    bool isRight = d.button("selectionCB")->isVisible() == kind.selectsAll;
    for (const char *name : {"openInFile", "printBtn", "savePDF", "toClipbrdBtn"})
        isRight = isRight && d.button(name)->isEnabled() == kind.ofOneModule;
    isRight = isRight && d.button("saveAllPdf")->isEnabled() == kind.savesPdf;
    isRight = isRight && d.button("saveCsvBtn")->isEnabled() == kind.savesSheet;
    for (const Kind &other : {kConcise, kComplete, kModule})
        isRight = isRight && d.button(other.box)->isChecked() == (other.box == kind.box);
    return isRight;
}

} // namespace

Q_DECLARE_METATYPE(Kind)

void TstSystemReport::startsAsConcise()
{
    const ReportDialog d(3);
    QVERIFY(shows(d, kConcise));
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
    QVERIFY(d.button("selectionCB")->isChecked());
    const ReportDialog empty;
    QVERIFY(shows(empty, kConcise));
    QVERIFY(!empty.button("selectionCB")->isChecked());
}

void TstSystemReport::kindSetsTheControls_data()
{
    QTest::addColumn<Kind>("from");
    QTest::addColumn<Kind>("to");
    QTest::addColumn<QString>("marks");
    QTest::newRow("concise to complete") << kConcise << kComplete << "xxxx";
    QTest::newRow("concise to module") << kConcise << kModule << "x---";
    QTest::newRow("complete to concise") << kComplete << kConcise << "xxxx";
    QTest::newRow("complete to module") << kComplete << kModule << "x---";
    QTest::newRow("module to concise") << kModule << kConcise << "xxxx";
    QTest::newRow("module to complete") << kModule << kComplete << "xxxx";
}

void TstSystemReport::kindSetsTheControls()
{
    QFETCH(Kind, from);
    QFETCH(Kind, to);
    MessageCatcher log;
    ReportDialog d(4);
    d.click(from.box);
    d.clickCell(2, 1);
    d.click(to.box);
    QVERIFY(shows(d, to));
    QTEST(d.marks(), "marks");
    QCOMPARE(d.button("selectionCB")->isChecked(), d.marks() == QStringLiteral("xxxx"));

    ReportDialog empty;
    empty.click(from.box);
    empty.click(to.box);
    QVERIFY(shows(empty, to));
}

void TstSystemReport::kindThatIsChosenSetsItsMarksAgain_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("changed");
    QTest::addColumn<QString>("marks");
    QTest::newRow("concise") << kConcise << "xx-"
                             << "xxx";
    QTest::newRow("module") << kModule << "--x"
                            << "x--";
}

void TstSystemReport::kindThatIsChosenSetsItsMarksAgain()
{
    QFETCH(Kind, kind);
    ReportDialog d(3);
    d.click(kind.box);
    d.clickCell(2, 1);
    QTEST(d.marks(), "changed");
    d.click(kind.box);
    QTEST(d.marks(), "marks");
    QVERIFY(shows(d, kind));
}

void TstSystemReport::kindsAreExclusive()
{
    const ReportDialog d;
    for (const Kind &kind : {kComplete, kModule, kConcise, kConcise}) {
        d.click(kind.box);
        QVERIFY(shows(d, kind));
    }
}

void TstSystemReport::unknownButtonIsNoKind()
{
    ReportDialog d(2);
    d.click(kModule.box);
    d.clickCell(1, 1);
    d.dialog.reportType_clicked(nullptr);
    d.dialog.reportType_clicked(d.button("printBtn"));
    QVERIFY(shows(d, kModule));
    QCOMPARE(d.marks(), QStringLiteral("-x"));
}

void TstSystemReport::clickTogglesOnce_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("mark") << 0;
    QTest::newRow("type") << 1;
    QTest::newRow("serial number") << 2;
}

void TstSystemReport::clickTogglesOnce()
{
    QFETCH(int, column);
    const ReportDialog d(3);
    const QSignalSpy changed(d.table()->model(), &QAbstractItemModel::dataChanged);
    d.clickCell(1, column);
    QCOMPARE(d.marks(), QStringLiteral("x-x"));
    QCOMPARE(changed.size(), 1);
    d.clickCell(0, column);
    QCOMPARE(d.marks(), QStringLiteral("--x"));
    d.clickCell(1, column);
    QCOMPARE(d.marks(), QStringLiteral("-xx"));
    QCOMPARE(changed.size(), 3);
}

void TstSystemReport::everyClickOfADoubleClickToggles()
{
    const ReportDialog d(3);
    const QSignalSpy changed(d.table()->model(), &QAbstractItemModel::dataChanged);
    const QPoint mark = d.table()->viewport()->mapTo(&d.dialog, d.cell(1, 0));
    QTest::mouseDClick(d.dialog.windowHandle(), Qt::LeftButton, {}, mark);
    QCOMPARE(changed.size(), 2);
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
    QTest::mouseClick(d.dialog.windowHandle(), Qt::LeftButton, {}, mark); // a third one at once
    QCOMPARE(d.marks(), QStringLiteral("x-x"));
}

void TstSystemReport::otherClicksToggleNothing()
{
    const ReportDialog d(3);
    QWidget *rows = d.table()->viewport();
    d.clickCell(1, 0, Qt::RightButton);
    d.clickCell(1, 0, Qt::MiddleButton);
    QTest::mouseDClick(d.dialog.windowHandle(), Qt::RightButton, {}, rows->mapTo(&d.dialog, d.cell(1, 0)));
    QTest::mousePress(rows, Qt::LeftButton, {}, d.cell(0, 0)); // changed her mind
    QTest::mouseRelease(rows, Qt::LeftButton, {}, d.cell(1, 0));
    QTest::mouseClick(rows, Qt::LeftButton, {}, {20, rows->height() - 5}); // below the rows
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
}

void TstSystemReport::clickMarksOneModule()
{
    const ReportDialog d(4);
    d.click(kModule.box);
    for (const int column : {0, 1, 2}) {
        d.clickCell(2, column);
        QCOMPARE(d.marks(), QStringLiteral("--x-"));
        d.clickCell(2, column); // it stays marked
        QCOMPARE(d.marks(), QStringLiteral("--x-"));
        d.clickCell(1, column);
        QCOMPARE(d.marks(), QStringLiteral("-x--"));
    }
}

void TstSystemReport::clickInTheCompleteKindChangesNothing()
{
    const ReportDialog d(2);
    d.click(kComplete.box);
    MessageCatcher log;
    for (const int column : {0, 1, 2})
        d.clickCell(1, column);
    QCOMPARE(d.marks(), QStringLiteral("xx"));
    QCOMPARE(log.lines().filter(QStringLiteral("Mode Not Defined")).size(), 3);
}

void TstSystemReport::selectAllMarksAllOrNone()
{
    const ReportDialog d(3);
    d.click("selectionCB");
    QCOMPARE(d.marks(), QStringLiteral("---"));
    d.click("selectionCB");
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
    d.clickCell(0, 0);
    d.click("selectionCB");
    QCOMPARE(d.marks(), QStringLiteral("xxx"));
}

void TstSystemReport::selectAllFollowsTheTable()
{
    ReportDialog d(2);
    const QAbstractButton *all = d.button("selectionCB");
    d.clickCell(0, 0);
    QVERIFY(!all->isChecked());
    QCOMPARE(d.marks(), QStringLiteral("-x")); // and the rows do not follow it in turn
    d.clickCell(0, 0);
    QVERIFY(all->isChecked());
    d.dialog.addModule({QStringLiteral("Voltage"), QString(), Qt::Unchecked, 9});
    QVERIFY(!all->isChecked());
    d.clickCell(2, 0);
    QVERIFY(all->isChecked());
    d.dialog.clear();
    QVERIFY(!all->isChecked());
    d.addRows(1);
    QVERIFY(all->isChecked());
}

void TstSystemReport::selectAllOfAnEmptyTableStaysOff()
{
    ReportDialog d;
    d.click("selectionCB");
    QVERIFY(!d.button("selectionCB")->isChecked());
    d.addRows(2);
    d.click("selectionCB");
    QCOMPARE(d.marks(), QStringLiteral("--"));
    d.dialog.clear();
    d.click("selectionCB");
    QVERIFY(!d.button("selectionCB")->isChecked());
}

void TstSystemReport::hiddenSelectAllDoesNothing_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("complete") << kComplete;
    QTest::newRow("module") << kModule;
}

void TstSystemReport::hiddenSelectAllDoesNothing()
{
    QFETCH(Kind, kind);
    ReportDialog d(3);
    d.click(kind.box);
    const QString before = d.marks();
    for (const bool isChecked : {false, true}) {
        d.button("selectionCB")->setChecked(isChecked);
        d.dialog.handleSelectCB();
        QCOMPARE(d.marks(), before);
    }
}

void TstSystemReport::buttonTellsItsWish_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<bool>("namesTheModule");
    const auto row = [](const Kind &kind, const char *button, const char *signal, bool namesTheModule) {
        QTest::newRow(button) << kind << QByteArray(button) << QByteArray(signal) << namesTheModule;
    };
    row(kComplete, "saveCsvBtn", SIGNAL(saveCSV()), false);
    row(kConcise, "saveAllPdf", SIGNAL(saveAllPdf()), false);
    row(kModule, "toClipbrdBtn", SIGNAL(clipboardCopy(uchar)), true);
    row(kModule, "openInFile", SIGNAL(openInFile(uchar)), true);
    row(kModule, "printBtn", SIGNAL(printSens(uchar)), true);
    row(kModule, "savePDF", SIGNAL(savePDF(uchar)), true);
}

void TstSystemReport::buttonTellsItsWish()
{
    QFETCH(Kind, kind);
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, signal);
    QFETCH(bool, namesTheModule);
    MessageCatcher log;
    ReportDialog d(130);
    d.click(kind.box);
    d.table()->scrollToBottom();
    d.clickCell(129, 1);
    std::vector<std::unique_ptr<QSignalSpy>> others;
    for (const char *other : {SIGNAL(saveCSV()), SIGNAL(saveAllPdf()), SIGNAL(clipboardCopy(uchar)),
                              SIGNAL(openInFile(uchar)), SIGNAL(printSens(uchar)), SIGNAL(savePDF(uchar))})
        if (signal != other)
            others.push_back(std::make_unique<QSignalSpy>(&d.dialog, other));
    const QSignalSpy spy(&d.dialog, signal.constData());
    d.click(button.constData());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first(), namesTheModule ? QVariantList{QVariant::fromValue(uchar{129})} : QVariantList{});
    for (const auto &other : others)
        QCOMPARE(other->size(), 0);
    QVERIFY(d.dialog.isVisible());
}

void TstSystemReport::withoutAMarkTheModuleIsTheController()
{
    MessageCatcher log;
    ReportDialog d;
    d.addRows(2, 5);
    d.click(kModule.box);
    QCOMPARE(int(d.dialog.firstChecked()), 5);
    d.dialog.clear();
    QCOMPARE(int(d.dialog.firstChecked()), 0);
    const QSignalSpy printed(&d.dialog, &SystemReport::printSens);
    const QSignalSpy copied(&d.dialog, &SystemReport::clipboardCopy);
    d.click("printBtn");
    d.click("toClipbrdBtn");
    QCOMPARE(printed.size(), 1);
    QCOMPARE(printed.first().first().toInt(), 0);
    QCOMPARE(copied.size(), 1);
    QCOMPARE(copied.first().first().toInt(), 0);
}

void TstSystemReport::printingIsLogged()
{
    ReportDialog d;
    d.addRows(1, 77);
    d.click(kModule.box);
    MessageCatcher log;
    d.click("printBtn");
    QVERIFY(log.contains(QtDebugMsg, QStringLiteral("First Checked  77")));
}

void TstSystemReport::newRowIsCheckedInEveryKind_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("marks");
    QTest::newRow("concise") << kConcise << "-xx";
    QTest::newRow("complete") << kComplete << "xxx";
    QTest::newRow("module") << kModule << "x-x";
}

void TstSystemReport::newRowIsCheckedInEveryKind()
{
    QFETCH(Kind, kind);
    MessageCatcher log;
    ReportDialog d(2);
    d.click(kind.box);
    d.clickCell(0, 1);
    d.addRows(1, 2);
    QTEST(d.marks(), "marks");
    QVERIFY(d.dialog.isSelected(2));
}

void TstSystemReport::knownModuleNeedsNoMark()
{
    ReportDialog d;
    QVERIFY(!d.dialog.isKnown(0));
    d.addRows(2, 128);
    d.clickCell(1, 1);
    QVERIFY(d.dialog.isSelected(128) && d.dialog.isKnown(128));
    QVERIFY(!d.dialog.isSelected(129) && d.dialog.isKnown(129));
    QVERIFY(!d.dialog.isSelected(127) && !d.dialog.isKnown(127));
}

void TstSystemReport::clearedTableFillsAgain()
{
    ReportDialog d(130);
    d.dialog.clear();
    QCOMPARE(d.marks(), QString());
    QVERIFY(!d.dialog.isKnown(3));
    d.addRows(2, 3);
    QCOMPARE(d.marks(), QStringLiteral("xx"));
    QVERIFY(d.dialog.isKnown(3));
    QVERIFY(!d.dialog.isKnown(5));
    QVERIFY(shows(d, kConcise));
}

QTEST_MAIN(TstSystemReport)
#include "tst_systemreport.moc"
