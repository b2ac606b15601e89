#include "reportdialog.h"
#include "support/dialoglook.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

/// Texts, fonts, places and names.
class TstSystemReportLook : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { dialoglook::resetFont(); }

    void windowIsAsAgreed();
    void textsAreAsAgreed_data();
    void textsAreAsAgreed();
    void toolTipsAreAsAgreed_data();
    void toolTipsAreAsAgreed();
    void fontsAreAsAgreed_data();
    void fontsAreAsAgreed();
    void fontsAreLookedUpWithTheFirstShow();
    void choiceMadeBeforeTheFirstShowIsShown();
    void tableFilledBeforeTheFirstShowIsFitted();
    void controlsAreNamed();
    void kindsAreExplained();
    void noButtonIsTheDefault();

    void everythingFits_data();
    void everythingFits();
    void tableTakesTheRoom();
    void eachKindHasItsButtonsBelow();
    void hiddenSelectAllKeepsItsPlace();

    void markColumnIsNarrow();
    void longestTypeFits_data();
    void longestTypeFits();
    void tableHasNoSidewaysScrolling();
    void longSerialNumberIsElided();
};

namespace {

const QStringList kSingleButtons{QStringLiteral("openInFile"), QStringLiteral("printBtn"),
                                 QStringLiteral("savePDF"), QStringLiteral("toClipbrdBtn")};

QRect place(const ReportDialog &d, const QString &name)
{
    const auto *widget = childByName<QWidget>(&d.dialog, qPrintable(name));
    return {widget->mapTo(&d.dialog, QPoint()), widget->size()};
}

} // namespace

void TstSystemReportLook::windowIsAsAgreed()
{
    const ReportDialog d;
    QCOMPARE(d.dialog.windowTitle(), QStringLiteral("System Report"));
    QVERIFY(d.dialog.windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(d.dialog.windowFlags() & Qt::WindowCloseButtonHint);
    QCOMPARE(d.dialog.windowType(), Qt::Dialog);
    QVERIFY(!d.dialog.parent());
}

void TstSystemReportLook::textsAreAsAgreed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("selectionCB") << "Select All";
    QTest::newRow("systemExcelCheckbox") << "Complete System Report";
    QTest::newRow("label_1") << "Detailed report about all available\ninformation of the selected modules.";
    QTest::newRow("systemPDFcheckBox") << "Concise System Report";
    QTest::newRow("label_2") << "General report about all relevant\ninformation of the selected modules.";
    QTest::newRow("oneModuleCheckbox") << "Detailed Module Report";
    QTest::newRow("label_3") << "Detailed report about all available\ninformation of one selected module.";
    QTest::newRow("openInFile") << "Open in Text File";
    QTest::newRow("printBtn") << "Print";
    QTest::newRow("savePDF") << "Save as PDF File";
    QTest::newRow("toClipbrdBtn") << "Copy To Clipboard";
    QTest::newRow("saveAllPdf") << "Save as PDF File";
    QTest::newRow("saveCsvBtn") << "Save as Excel";
}

void TstSystemReportLook::textsAreAsAgreed()
{
    const ReportDialog d;
    const auto *widget = childByName<QWidget>(&d.dialog, QTest::currentDataTag());
    QTEST(widget->property("text").toString(), "text");
}

void TstSystemReportLook::toolTipsAreAsAgreed_data()
{
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("openInFile") << "Opens notepad with information of first selected module in list.";
    QTest::newRow("printBtn") << "Prints the first selected module in the list to a Printer.";
    QTest::newRow("savePDF") << "Save only the first selected module in PDF file.";
    QTest::newRow("toClipbrdBtn") << "Copies the first item in selected list to Clipboard";
    QTest::newRow("saveAllPdf") << QString();
    QTest::newRow("saveCsvBtn") << "Stores all selected items to .Xlsx format file.";
}

void TstSystemReportLook::toolTipsAreAsAgreed()
{
    const ReportDialog d;
    QTEST(d.button(QTest::currentDataTag())->toolTip(), "toolTip");
}

void TstSystemReportLook::fontsAreAsAgreed_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("weight");
    for (const char *kind : {"systemExcelCheckbox", "systemPDFcheckBox", "oneModuleCheckbox"})
        QTest::newRow(kind) << 12 << 75;
    QTest::newRow("selectionCB") << 12 << 50;
    for (const char *small : {"label_1", "label_2", "label_3", "tableView", "openInFile", "printBtn",
                              "savePDF", "toClipbrdBtn", "saveAllPdf", "saveCsvBtn"})
        QTest::newRow(small) << 11 << 50;
}

void TstSystemReportLook::fontsAreAsAgreed()
{
    const ReportDialog d;
    const QFont font = childByName<QWidget>(&d.dialog, QTest::currentDataTag())->font();
    QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
    QTEST(font.pixelSize(), "pixels");
    QTEST(font.weight(), "weight");
    QCOMPARE(d.table()->horizontalHeader()->font().pixelSize(), 11);
}

void TstSystemReportLook::fontsAreLookedUpWithTheFirstShow()
{
    SystemReport dialog;
    const auto *table = childByName<QTableView>(&dialog, "tableView");
    const auto *kind = childByName<QCheckBox>(&dialog, "systemPDFcheckBox");
    QVERIFY(table->font().pixelSize() != 11);
    QVERIFY(!kind->font().bold());
    dialog.show();
    QCOMPARE(table->font().pixelSize(), 11);
    QVERIFY(kind->font().bold());
}

void TstSystemReportLook::choiceMadeBeforeTheFirstShowIsShown()
{
    SystemReport dialog;
    for (quint8 address = 1; address <= 3; ++address)
        dialog.addModule({QStringLiteral("Voltage"), QStringLiteral("230001"), Qt::Checked, address});
    auto *kind = childByName<QCheckBox>(&dialog, "oneModuleCheckbox");
    kind->click();
    auto *table = childByName<QTableView>(&dialog, "tableView");
    emit table->clicked(table->model()->index(2, 0));
    QCOMPARE(dialog.firstChecked(), quint8(3));
    dialog.show();
    QCOMPARE(dialog.firstChecked(), quint8(3));
    QVERIFY(kind->isChecked());
    QVERIFY(childByName<QPushButton>(&dialog, "printBtn")->isEnabled());
    QVERIFY(!childByName<QPushButton>(&dialog, "saveAllPdf")->isEnabled());
    QVERIFY(childByName<QCheckBox>(&dialog, "selectionCB")->isHidden());
}

void TstSystemReportLook::tableFilledBeforeTheFirstShowIsFitted()
{
    ReportDialog before(130);
    ReportDialog after;
    after.addRows(130);
    QCOMPARE(before.dialog.size(), after.dialog.size());
    for (int column = 0; column < 3; ++column)
        QTRY_COMPARE(before.table()->columnWidth(column), after.table()->columnWidth(column));
    for (const int row : {0, 129})
        QCOMPARE(before.table()->rowHeight(row), after.table()->rowHeight(row));
    QCOMPARE(before.table()->rowHeight(0), QFontMetrics(before.table()->font()).height() + 8);
    QCOMPARE(before.cell(5, 2), after.cell(5, 2));
}

void TstSystemReportLook::controlsAreNamed()
{
    const ReportDialog d;
    QStringList names;
    auto widgets =
        d.dialog.findChildren<QWidget *>(QRegularExpression(QStringLiteral("Btn$|[cC]heck[bB]ox$")));
    QCOMPARE(widgets.size(), 6);
    for (const char *name :
         {"selectionCB", "tableView", "ReportTypeGroupBox", "openInFile", "savePDF", "saveAllPdf"})
        widgets.append(childByName<QWidget>(&d.dialog, name));
    for (const QWidget *widget : qAsConst(widgets)) {
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        names.append(widget->accessibleName());
    }
    QCOMPARE(names.removeDuplicates(), 0);
}

void TstSystemReportLook::kindsAreExplained()
{
    const ReportDialog d;
    const auto *group = childByName<QButtonGroup>(&d.dialog, "reportTypeGroup");
    QVERIFY(group->exclusive());
    QCOMPARE(group->buttons().size(), 3);
    const char *const kinds[] = {"systemExcelCheckbox", "systemPDFcheckBox", "oneModuleCheckbox"};
    const char *const labels[] = {"label_1", "label_2", "label_3"};
    for (int i = 0; i < 3; ++i) {
        QVERIFY(qobject_cast<QCheckBox *>(d.button(kinds[i])));
        QVERIFY(group->buttons().contains(d.button(kinds[i])));
        QCOMPARE(d.button(kinds[i])->accessibleDescription(),
                 childByName<QLabel>(&d.dialog, labels[i])->text());
    }
}

void TstSystemReportLook::noButtonIsTheDefault()
{
    const ReportDialog d;
    const auto buttons = d.dialog.findChildren<QPushButton *>();
    QCOMPARE(buttons.size(), 6);
    for (const QPushButton *button : buttons)
        QVERIFY(!button->autoDefault() && !button->isDefault());
}

void TstSystemReportLook::everythingFits_data()
{
    dialoglook::addFonts();
}

void TstSystemReportLook::everythingFits()
{
    QFETCH(QString, family);
    QVERIFY(dialoglook::useFont(family));
    ReportDialog d(130);
    QVERIFY(d.dialog.width() <= 800 && d.dialog.height() <= 550); // on every screen, with room around it
    for (const QSize &size : {d.dialog.size(), QSize(1, 1), QSize(1200, 900)}) {
        d.dialog.resize(size);
        for (const char *kind : {"systemExcelCheckbox", "oneModuleCheckbox", "systemPDFcheckBox"}) {
            d.button(kind)->click();
            QCoreApplication::sendPostedEvents();
            QStringList clipped = dialoglook::clipped(d.dialog);
            clipped.removeAll(QString()); // parts of the table that the toolkit makes
            QCOMPARE(clipped, QStringList());
        }
    }
}

void TstSystemReportLook::tableTakesTheRoom()
{
    ReportDialog d;
    const QSize before = d.table()->size();
    const QSize group = place(d, QStringLiteral("ReportTypeGroupBox")).size();
    d.dialog.resize(d.dialog.size() + QSize(200, 100));
    QCOMPARE(d.table()->size(), before + QSize(200, 100));
    QCOMPARE(place(d, QStringLiteral("ReportTypeGroupBox")).width(), group.width());
    QVERIFY(place(d, QStringLiteral("tableView")).right() <
            place(d, QStringLiteral("ReportTypeGroupBox")).left());
    QCOMPARE(place(d, QStringLiteral("selectionCB")).left(), place(d, QStringLiteral("tableView")).left());
}

void TstSystemReportLook::eachKindHasItsButtonsBelow()
{
    const ReportDialog d;
    const QList<QStringList> kinds{
        {QStringLiteral("systemExcelCheckbox"), QStringLiteral("label_1"), QStringLiteral("saveCsvBtn")},
        {QStringLiteral("systemPDFcheckBox"), QStringLiteral("label_2"), QStringLiteral("saveAllPdf")},
        QStringList{QStringLiteral("oneModuleCheckbox"), QStringLiteral("label_3")} + kSingleButtons};
    int bottom = 0;
    for (const QStringList &kind : kinds) {
        QVERIFY(place(d, kind.at(0)).top() > bottom);
        QVERIFY(place(d, kind.at(1)).top() > place(d, kind.at(0)).bottom());
        QVERIFY(place(d, kind.at(2)).top() > place(d, kind.at(1)).bottom());
        QCOMPARE(place(d, kind.at(0)).left(), place(d, kinds.first().first()).left());
        QCOMPARE(place(d, kind.at(1)).left(), place(d, kind.at(2)).left());
        bottom = place(d, kind.last()).bottom();
    }
    QCOMPARE(place(d, kSingleButtons.at(0)).top(), place(d, kSingleButtons.at(1)).top());
    QCOMPARE(place(d, kSingleButtons.at(2)).top(), place(d, kSingleButtons.at(3)).top());
}

void TstSystemReportLook::hiddenSelectAllKeepsItsPlace()
{
    const ReportDialog d(130);
    const QRect table = place(d, QStringLiteral("tableView"));
    const QSize window = d.dialog.size();
    for (const char *kind : {"systemExcelCheckbox", "oneModuleCheckbox", "systemPDFcheckBox"}) {
        d.click(kind);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(place(d, QStringLiteral("tableView")), table);
        QCOMPARE(d.dialog.size(), window);
    }
}

void TstSystemReportLook::markColumnIsNarrow()
{
    ReportDialog d;
    const int narrowest = d.table()->horizontalHeader()->minimumSectionSize();
    QVERIFY(narrowest >= d.dialog.style()->pixelMetric(QStyle::PM_IndicatorWidth)); // holds the mark
    QCOMPARE(d.table()->columnWidth(0), narrowest);
    d.table()->setColumnWidth(0, 80);
    d.addRows(1);
    QCOMPARE(d.table()->columnWidth(0), narrowest);
    QVERIFY(d.table()->verticalHeader()->isHidden());
}

void TstSystemReportLook::longestTypeFits_data()
{
    dialoglook::addFonts();
}

void TstSystemReportLook::longestTypeFits()
{
    QFETCH(QString, family);
    QVERIFY(dialoglook::useFont(family));
    ReportDialog d;
    d.dialog.addModule({QStringLiteral("Inductive Transmitter"), QStringLiteral("2305678901234567"),
                        Qt::Checked, 1}); // as long as a serial number can be
    d.dialog.resize(1, 1);
    const QModelIndex type = d.table()->model()->index(0, 1);
    QVERIFY(d.table()->columnWidth(1) >= d.table()->sizeHintForIndex(type).width());
    QVERIFY(d.table()->columnWidth(2) >= d.table()->sizeHintForIndex(type.sibling(0, 2)).width());
    QVERIFY(d.table()->rowHeight(0) >= d.table()->sizeHintForIndex(type).height());
}

void TstSystemReportLook::tableHasNoSidewaysScrolling()
{
    ReportDialog d(130);
    for (const QSize &size : {d.dialog.size(), QSize(1, 1), QSize(1200, 900)}) {
        d.dialog.resize(size);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(d.table()->horizontalScrollBar()->maximum(), 0);
        QVERIFY(d.table()->verticalScrollBar()->maximum() > 0);
    }
}

void TstSystemReportLook::longSerialNumberIsElided()
{
    ReportDialog d;
    const QString serial(40, QLatin1Char('W'));
    d.dialog.addModule({QStringLiteral("Voltage"), serial, Qt::Checked, 1});
    const QModelIndex cell = d.table()->model()->index(0, 2);
    QVERIFY(d.table()->columnWidth(2) < d.table()->sizeHintForIndex(cell).width());
    QCOMPARE(d.table()->textElideMode(), Qt::ElideRight);
    QVERIFY(!d.table()->wordWrap());
    QVERIFY(cell.data(Qt::ToolTipRole).toString().contains(serial));
}

QTEST_MAIN(TstSystemReportLook)
#include "tst_systemreport_look.moc"
