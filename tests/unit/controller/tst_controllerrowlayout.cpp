#include "base/gui/fonts.h"
#include "controller/modulecontroller_view.h"
#include "controller/mydoublespinbox.h"
#include "support/childbyname.h"

#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionGroupBox>
#include <QtTest>
#include <memory>

namespace {

constexpr int kNarrowest = 1104; // what the window leaves to a row
constexpr int kHighest = 100;

/// A row of this width, with the longest texts that a device brings about.
std::unique_ptr<ModuleController_View> fullRow(int width)
{
    auto row = std::make_unique<ModuleController_View>(1);
    row->setSerial(QStringLiteral("XXXXXXX"));
    row->setPowerSerial(QStringLiteral("XXXXXXX"));
    row->setVoltage(20.47F);
    row->setTemperature(200.5F);
    row->setSelftest(255);
    row->setPowerVoltage(20.47F);
    row->setPowerTemperature(200.5F);
    row->setPowerSelftest(255);
    row->SetOutputVoltageMode(0);
    row->setOutputVoltageSetpoint(20);
    row->setProtection(2);
    row->setLoadCurrent(32.767F);
    row->setInputVoltage(655.35F);
    row->setStatusFlag(true);
    row->resize(width, row->sizeHint().height());
    row->show();
    return row;
}

template <typename Option, typename T>
Option optionOf(const T &widget)
{
    Option option;
    option.initFrom(&widget);
    option.subControls = QStyle::SC_All;
    return option;
}

/// Width that a text has beside the frame or the arrow of a box.
int roomForEntry(const QComboBox &box)
{
    const auto option = optionOf<QStyleOptionComboBox>(box);
    return box.style()
               ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
               .width() -
           2; // drawn with a margin of 1
}

QRect groupFrame(const QGroupBox &group)
{
    auto option = optionOf<QStyleOptionGroupBox>(group);
    option.text = group.title();
    return group.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxFrame, &group);
}

bool fits(const QWidget &widget, const QString &text, QSize room)
{
    const QFontMetrics metrics = widget.fontMetrics();
    return metrics.horizontalAdvance(text) <= room.width() && metrics.height() <= room.height();
}

QList<QWidget *> shownChildren(const QWidget &parent)
{
    QList<QWidget *> shown;
    for (QWidget *child : parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!child->isHidden())
            shown << child;
    }
    return shown;
}

/// The first pair of shown widgets below `parent` that cover each other, or a widget that leaves its parent.
QString firstMisplaced(const QWidget &parent)
{
    const QList<QWidget *> children = shownChildren(parent);
    for (const QWidget *child : children) {
        if (!parent.rect().contains(child->geometry()))
            return child->objectName() + QStringLiteral(" is cut");
        for (const QWidget *other : children) {
            if (other != child && child->geometry().intersects(other->geometry()))
                return child->objectName() + QStringLiteral(" covers ") + other->objectName();
        }
        const bool isContainer = child->layout() != nullptr;
        const QString inside = isContainer ? firstMisplaced(*child) : QString();
        if (!inside.isEmpty())
            return inside;
    }
    return QString();
}

} // namespace

/// Where the parts of the top row stand, whether they show their texts whole, and how they are reached.
class TstControllerRowLayout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void rowIsLow_data() { addLooks(); }
    void rowIsLow();
    void labelsAreShownWhole_data() { addLooks(); }
    void labelsAreShownWhole();
    void titlesAndButtonsAreShownWhole_data() { addLooks(); }
    void titlesAndButtonsAreShownWhole();
    void entriesAreShownWhole_data() { addLooks(); }
    void entriesAreShownWhole();
    void nothingOverlapsOrIsCut_data() { addLooks(); }
    void nothingOverlapsOrIsCut();
    void contentsStandInTheirGroups_data() { addLooks(); }
    void contentsStandInTheirGroups();
    void captionsOfThePowerModuleReadAsAgreed_data();
    void captionsOfThePowerModuleReadAsAgreed();
    void unitsStandBesideTheirValues();
    void tabOrderIsReadingOrder();
    void controlsHaveAccessibleNames();

private:
    static void addLooks();
    std::unique_ptr<ModuleController_View> rowOfThisLook();
};

void TstControllerRowLayout::initTestCase()
{
    fonts::installSubstitutions();
}

void TstControllerRowLayout::cleanup()
{
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    fonts::installSubstitutions();
    QApplication::setStyle(QStringLiteral("Fusion"));
}

void TstControllerRowLayout::addLooks()
{
    QTest::addColumn<QString>("font");
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("width");
    for (const char *font : {"Open Sans", "DejaVu Sans"}) {
        for (const char *style : {"Fusion", "Windows"}) {
            for (const int width : {kNarrowest, 1120, 1144})
                QTest::addRow("%s, %s, %d", font, style, width) << font << style << width;
        }
    }
}

std::unique_ptr<ModuleController_View> TstControllerRowLayout::rowOfThisLook()
{
    const QString font = *static_cast<QString *>(QTest::qData("font", QMetaType::QString));
    const QString style = *static_cast<QString *>(QTest::qData("style", QMetaType::QString));
    const int width = *static_cast<int *>(QTest::qData("width", QMetaType::Int));
    if (!QFontDatabase().hasFamily(font))
        qFatal("The font %s is not installed.", qPrintable(font));
    QApplication::setStyle(style);
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), font);
    QApplication::setFont(fonts::text()); // as the program does
    return fullRow(width);
}

void TstControllerRowLayout::rowIsLow()
{
    const auto row = rowOfThisLook();
    QVERIFY2(row->height() <= kHighest, qPrintable(QString::number(row->height())));
    QVERIFY2(row->minimumSizeHint().width() <= kNarrowest,
             qPrintable(QString::number(row->minimumSizeHint().width())));
}

void TstControllerRowLayout::labelsAreShownWhole()
{
    const auto row = rowOfThisLook();
    const auto labels = row->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        QVERIFY2(fits(*label, label->text(), label->contentsRect().size()), qPrintable(label->objectName()));
    auto *protection = childByName<QLabel>(row.get(), "label_Protection");
    for (const int code : {0, 1, 2, 3, 255}) {
        row->setProtection(static_cast<quint8>(code));
        QVERIFY2(fits(*protection, protection->text(), protection->size()), qPrintable(protection->text()));
    }
    QVERIFY(fits(*protection, QStringLiteral("updating"), protection->size()));
}

void TstControllerRowLayout::titlesAndButtonsAreShownWhole()
{
    const auto row = rowOfThisLook();
    const auto groups = row->findChildren<QGroupBox *>();
    for (const QGroupBox *group : groups)
        QVERIFY2(group->fontMetrics().horizontalAdvance(group->title()) <= group->width() - 2 * 8,
                 qPrintable(group->objectName()));
    const auto buttons = row->findChildren<QPushButton *>();
    for (const QPushButton *button : buttons)
        QVERIFY2(fits(*button, button->text(), button->size()), qPrintable(button->objectName()));
}

void TstControllerRowLayout::entriesAreShownWhole()
{
    const auto row = rowOfThisLook();
    const auto *mode = childByName<QComboBox>(row.get(), "comboBox_OutputVoltageMode");
    for (int i = 0; i < mode->count(); ++i)
        QVERIFY(fits(*mode, mode->itemText(i), QSize(roomForEntry(*mode), mode->height())));
    for (const char *colour : {"", "red", "black"}) {
        row->setSetpointColour(QLatin1String(colour));
        row->layout()->activate();
        const auto *spin = childByName<MyDoubleSpinBox>(row.get(), "doubleSpinBox_OutputVoltage");
        const auto *edit = spin->findChild<QLineEdit *>();
        QCOMPARE(edit->text(), QStringLiteral("20.0"));
        QCOMPARE(edit->font().family(), fonts::text().family());
        const QSize ink = edit->fontMetrics().tightBoundingRect(edit->text()).size();
        QVERIFY2(ink.width() + 6 <= edit->width() && ink.height() + 4 <= edit->height(), colour);
        QVERIFY2(spin->rect().contains(edit->geometry()), colour);
    }
}

void TstControllerRowLayout::nothingOverlapsOrIsCut()
{
    const auto row = rowOfThisLook();
    const QString misplaced = firstMisplaced(*row);
    QVERIFY2(misplaced.isEmpty(), qPrintable(misplaced));
}

void TstControllerRowLayout::contentsStandInTheirGroups()
{
    const auto row = rowOfThisLook();
    for (const char *name : {"groupBox_Status", "groupBox_Status_Pow", "groupBox_OutputVoltage"}) {
        const auto *group = childByName<QGroupBox>(row.get(), name);
        const QRect frame = groupFrame(*group);
        for (const QWidget *child : shownChildren(*group))
            QVERIFY2(frame.contains(child->geometry()), qPrintable(child->objectName()));
    }
}

void TstControllerRowLayout::captionsOfThePowerModuleReadAsAgreed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("label_TxtSetpoint") << "Setpoint [V]";
    QTest::newRow("label_TxtMode") << "Mode";
    QTest::newRow("label_TxtProtection") << "Protection:";
    QTest::newRow("label_Protection") << "updating";
    QTest::newRow("label_TxtLoadCurrent") << "Output Load Current";
    QTest::newRow("label_TxtInputVoltage") << "Rectified Input Supply Voltage";
    QTest::newRow("label_UnitLoadCurrent") << "A";
    QTest::newRow("label_UnitInputVoltage") << "V";
}

void TstControllerRowLayout::captionsOfThePowerModuleReadAsAgreed()
{
    const ModuleController_View row(1);
    QTEST(childByName<QLabel>(&row, QTest::currentDataTag())->text(), "text");
}

void TstControllerRowLayout::unitsStandBesideTheirValues()
{
    const auto row = fullRow(kNarrowest);
    for (const QString &name : {QStringLiteral("LoadCurrent"), QStringLiteral("InputVoltage")}) {
        const auto *value = childByName<QLabel>(row.get(), qPrintable(QStringLiteral("label_") + name));
        const auto *unit = childByName<QLabel>(row.get(), qPrintable(QStringLiteral("label_Unit") + name));
        const auto *bar =
            childByName<QProgressBar>(row.get(), qPrintable(QStringLiteral("progressBar_") + name));
        QCOMPARE(unit->y(), value->y());
        QVERIFY(unit->x() > value->geometry().right() && unit->x() - value->geometry().right() < 8);
        QVERIFY(bar->geometry().right() < value->x());
        QVERIFY(bar->y() >= value->y() && bar->geometry().bottom() <= value->geometry().bottom());
    }
}

void TstControllerRowLayout::tabOrderIsReadingOrder()
{
    const auto row = fullRow(kNarrowest);
    QStringList order;
    for (QWidget *widget = row->nextInFocusChain(); widget != row.get();
         widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy())
            order << widget->objectName();
    }
    order.removeAll(QStringLiteral("qt_spinbox_lineedit"));
    QCOMPARE(order,
             QStringList({QStringLiteral("pushButton_modType"), QStringLiteral("pushButton_powModType"),
                          QStringLiteral("doubleSpinBox_OutputVoltage"),
                          QStringLiteral("comboBox_OutputVoltageMode")}));
}

void TstControllerRowLayout::controlsHaveAccessibleNames()
{
    const ModuleController_View row(1);
    QStringList names;
    for (const char *control :
         {"pushButton_modType", "pushButton_powModType", "doubleSpinBox_OutputVoltage",
          "comboBox_OutputVoltageMode", "progressBar_LoadCurrent", "progressBar_InputVoltage"}) {
        const QString name = childByName<QWidget>(&row, control)->accessibleName();
        QVERIFY2(!name.isEmpty(), control);
        names << name;
    }
    QCOMPARE(names.removeDuplicates(), 0);
}

QTEST_MAIN(TstControllerRowLayout)
#include "tst_controllerrowlayout.moc"
