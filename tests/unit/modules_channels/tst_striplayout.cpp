#include "base/gui/fonts.h"
#include "modules/common/rowcolumns.h"
#include "stripfixture.h"

#include <QFontDatabase>
#include <QLabel>
#include <QStyleOptionComboBox>

namespace {

rowcolumns::Columns columnsOf(int family)
{
    const HeaderForm form = family == 2   ? HeaderForm::Voltage
                            : family == 3 ? HeaderForm::Thermo
                                          : HeaderForm::StrainGauge;
    return rowcolumns::columns(form);
}

/// The direct children that are not hidden.
QList<QWidget *> shownControls(const QWidget &strip)
{
    QList<QWidget *> shown;
    for (QWidget *child : strip.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!child->isHidden())
            shown << child;
    }
    return shown;
}

void addFamiliesAndFonts()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QString>("font");
    QTest::addColumn<QString>("style");
    for (const int family : {1, 2, 3, 4}) {
        for (const char *font : {"Open Sans", "DejaVu Sans"}) {
            for (const char *style : {"Fusion", "Windows"})
                QTest::addRow("type %d, %s, %s", family, font, style) << family << font << style;
        }
    }
}

/// Width of the text in the place where the box draws its entry.
bool showsEntry(const QComboBox &box, const QString &entry)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.subControls = QStyle::SC_All;
    const QRect place =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    return box.fontMetrics().horizontalAdvance(entry) <= place.width() - 2; // drawn with a margin of 1
}

} // namespace

/// Where the controls of a strip stand, in which order the Tab key visits them, and how they are called.
class TstStripLayout : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void controlsStandInTheirColumns_data() { addFamilies({1, 2, 3, 4}); }
    void controlsStandInTheirColumns();
    void controlsDoNotOverlap_data() { addFamilies({1, 2, 3, 4}); }
    void controlsDoNotOverlap();
    void textsAreShownWhole_data() { addFamiliesAndFonts(); }
    void textsAreShownWhole();
    void tabOrderIsReadingOrder_data();
    void tabOrderIsReadingOrder();
    void controlsHaveAccessibleNames_data();
    void controlsHaveAccessibleNames();
};

void TstStripLayout::cleanup()
{
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    fonts::installSubstitutions();
    QApplication::setStyle(QStringLiteral("Fusion"));
}

void TstStripLayout::controlsStandInTheirColumns()
{
    QFETCH(int, family);
    const StripFixture s(family);
    const rowcolumns::Columns columns = columnsOf(family);
    const auto fills = [](const QWidget *widget, const rowcolumns::Column &column) {
        return widget->x() == column.left && widget->width() == column.width;
    };
    const auto isIn = [](const QWidget *widget, const rowcolumns::Column &column) {
        return widget->x() >= column.left && widget->geometry().right() < column.end();
    };
    QCOMPARE(s.strip->size(), QSize(402, 38));
    QVERIFY(fills(s.typeBox(), columns.firstInfo));
    QVERIFY(fills(s.rangeBox(), columns.secondInfo));
    QVERIFY(fills(s.filterBox(), columns.filter));
    if (family == 3)
        return;
    QVERIFY(fills(s.autozero(), columns.autozero));
    QVERIFY(isIn(s.polarity(), columns.revPol));
    QCOMPARE(s.polarity()->size(), QSize(20, 20)); // as its pictures
    if (family == 2)
        return;
    QVERIFY(fills(s.button("pushButton_ManualOffset"), columns.manualOffset));
    for (const char *name : {"label", "label_2", "checkBox_Shunt_Pos", "checkBox_Shunt_Neg",
                             "checkBox_Shunt_Pos_Presel", "checkBox_Shunt_Neg_Presel"})
        QVERIFY2(isIn(s.child<QWidget>(name), columns.shunt), name);
    // One line for each shunt: sign, switch, preselection.
    for (const QStringList &line :
         {QStringList{"label", "checkBox_Shunt_Pos", "checkBox_Shunt_Pos_Presel"},
          QStringList{"label_2", "checkBox_Shunt_Neg", "checkBox_Shunt_Neg_Presel"}}) {
        QList<const QWidget *> widgets;
        for (const QString &name : line)
            widgets << s.child<QWidget>(name.toLatin1().constData());
        QVERIFY(widgets[0]->y() == widgets[1]->y() && widgets[1]->y() == widgets[2]->y());
        QVERIFY(widgets[0]->x() < widgets[1]->x() && widgets[1]->x() < widgets[2]->x());
        QCOMPARE(widgets[1]->size(), QSize(18, 18));
        QCOMPARE(widgets[2]->size(), QSize(18, 18));
    }
}

void TstStripLayout::controlsDoNotOverlap()
{
    QFETCH(int, family);
    StripFixture s(family);
    s.show();
    const QList<QWidget *> controls = shownControls(*s.strip);
    for (const QWidget *control : controls) {
        QVERIFY2(s.strip->rect().contains(control->geometry()), qPrintable(control->objectName()));
        for (const QWidget *other : controls) {
            const bool apart = other == control || !control->geometry().intersects(other->geometry());
            QVERIFY2(apart, qPrintable(control->objectName() + QLatin1Char('/') + other->objectName()));
        }
    }
}

void TstStripLayout::textsAreShownWhole()
{
    QFETCH(int, family);
    QFETCH(QString, font);
    QFETCH(QString, style);
    QVERIFY2(QFontDatabase().hasFamily(font), "The font is not installed.");
    QApplication::setStyle(style);
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), font);
    StripFixture s(family);
    s.show();
    for (const QString &entry : {QStringLiteral("120 Quarter"), QStringLiteral("1000 Half")})
        QVERIFY2(showsEntry(*s.typeBox(), entry), qPrintable(entry));
    QVERIFY(showsEntry(*s.rangeBox(), QStringLiteral("1000")));
    const auto *digits = s.filterBox()->findChild<QLineEdit *>();
    const QString filter = family == 3 ? QStringLiteral("32") : QStringLiteral("50000");
    QVERIFY(digits->fontMetrics().horizontalAdvance(filter) <= digits->width() - 4); // with its margins
    QVERIFY(s.filterBox()->height() >= digits->fontMetrics().height());
    if (family == 3)
        return;
    const QSize autozero = s.autozero()->fontMetrics().size(0, s.autozero()->text());
    QVERIFY(autozero.width() <= s.autozero()->width() - 4);
    QVERIFY(autozero.height() <= s.autozero()->height());
    if (family == 2)
        return;
    const QPushButton *offset = s.button("pushButton_ManualOffset");
    for (const QString &text : {QStringLiteral("Auto"), QStringLiteral("-999.9")})
        QVERIFY(offset->fontMetrics().horizontalAdvance(text) <= offset->width() - 4);
    for (const char *name : {"label", "label_2"}) {
        const auto *sign = s.child<QLabel>(name);
        QVERIFY(sign->fontMetrics().tightBoundingRect(sign->text()).width() <= sign->width());
    }
}

void TstStripLayout::tabOrderIsReadingOrder_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QStringList>("names");
    const QStringList first{"comboBox_BridgeType", "comboBox_Gain", "pushButton_Autozero"};
    const QStringList shunts{"checkBox_Shunt_Pos", "checkBox_Shunt_Pos_Presel", "checkBox_Shunt_Neg",
                             "checkBox_Shunt_Neg_Presel", "pushButton_ManualOffset"};
    QTest::newRow("type 1") << 1 << first + shunts + QStringList{"filterSpinBox", "checkBox_RevPol_100"};
    QTest::newRow("type 2") << 2
                            << QStringList{"comboBox_BridgeType", "comboBox_RangeGain", "pushButton_Autozero",
                                           "filterSpinBox", "checkBox_RevPol"};
    QTest::newRow("type 3") << 3
                            << QStringList{"comboBox_ThermoDeviceType", "comboBox_TemperatureRange",
                                           "filterSpinBox"};
    QTest::newRow("type 4") << 4 << first + shunts + QStringList{"filterSpinBox", "checkBox_RevPol"};
}

void TstStripLayout::tabOrderIsReadingOrder()
{
    QFETCH(int, family);
    QFETCH(QStringList, names);
    StripFixture s(family);
    s.show();
    s.typeBox()->setFocus();
    QStringList visited;
    while (s.strip->isAncestorOf(QApplication::focusWidget()) && visited.size() <= names.size()) {
        visited << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(visited, names);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), names.last());
}

void TstStripLayout::controlsHaveAccessibleNames_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QStringList>("names"); // in the order of the Tab key
    const QStringList bridge{"Bridge type",
                             "Range",
                             "Auto Zero",
                             "Positive shunt",
                             "Preselect positive shunt",
                             "Negative shunt",
                             "Preselect negative shunt",
                             "Offset",
                             "Filter frequency",
                             "Invert"};
    QTest::newRow("type 1") << 1 << bridge;
    QTest::newRow("type 2") << 2 << QStringList{"Input", "Range", "Auto Zero", "Filter frequency", "Invert"};
    QTest::newRow("type 3") << 3 << QStringList{"Sensor type", "Temperature range", "Filter"};
    QTest::newRow("type 4") << 4 << QStringList{"Bridge or input type"} + bridge.mid(1);
}

void TstStripLayout::controlsHaveAccessibleNames()
{
    QFETCH(int, family);
    StripFixture s(family);
    s.show();
    s.typeBox()->setFocus();
    QStringList names;
    while (s.strip->isAncestorOf(QApplication::focusWidget()) && names.size() < 20) {
        names << QApplication::focusWidget()->accessibleName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QTEST(names, "names");
}

QTEST_MAIN(TstStripLayout)
#include "tst_striplayout.moc"
