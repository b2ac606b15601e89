#include "modules/common/widgetstyle.h"
#include "modules/widgets/customt3spinbox.h"
#include "modules/widgets/filterspinbox.h"
#include "support/virtualtime.h"

#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>
#include <memory>

class TstWidgetStyle : public QObject
{
    Q_OBJECT

private slots:
    void otherFontIsSet();
    void fontOfTheApplicationIsNotSetAgain();
    void fontOfTheParentIsNotSetAgain();
    void styleIsSetOnce();
    void fieldOfAStyledSpinBoxIsForgotten();
    void spinBoxesOfStripsForgetTheirFields();
};

namespace {

/// Counts the style sheets that a widget is given.
class StyledLabel : public QLabel
{
public:
    int changes = 0;

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange)
            ++changes;
        QLabel::changeEvent(event);
    }
};

QFont otherFont()
{
    QFont font;
    font.setPixelSize(31);
    return font;
}

} // namespace

void TstWidgetStyle::otherFontIsSet()
{
    QLabel label;
    setFontIfChanged(label, otherFont());
    QCOMPARE(label.font(), otherFont());
    QVERIFY(label.testAttribute(Qt::WA_SetFont));
}

void TstWidgetStyle::fontOfTheApplicationIsNotSetAgain()
{
    QLabel label;
    setFontIfChanged(label, QApplication::font());
    QCOMPARE(label.font(), QApplication::font());
    QVERIFY(!label.testAttribute(Qt::WA_SetFont));
}

void TstWidgetStyle::fontOfTheParentIsNotSetAgain()
{
    QWidget parent;
    parent.setFont(otherFont());
    auto *label = new QLabel(&parent);
    setFontIfChanged(*label, otherFont());
    QVERIFY(!label->testAttribute(Qt::WA_SetFont));
}

void TstWidgetStyle::styleIsSetOnce()
{
    const QString red = QStringLiteral("color:#C00000");
    StyledLabel label;
    label.ensurePolished();
    setStyleIfChanged(label, red);
    const int changes = label.changes;
    QVERIFY(changes > 0);
    setStyleIfChanged(label, red);
    QCOMPARE(label.changes, changes);
    setStyleIfChanged(label, QStringLiteral("color:black"));
    QVERIFY(label.changes > changes);
}

void TstWidgetStyle::fieldOfAStyledSpinBoxIsForgotten()
{
    QSpinBox box;
    box.show();
    auto *field = box.findChild<QLineEdit *>();
    forgetStyleOfField(box); // nothing is remembered
    QVERIFY(field->styleSheet().isEmpty());
    setStyleIfChanged(box, QStringLiteral("color:#C00000"));
    QVERIFY(!field->testAttribute(Qt::WA_StyleSheet)); // the mark of a widget whose end is noticed
    forgetStyleOfField(box);
    QVERIFY(field->testAttribute(Qt::WA_StyleSheet));
    QCOMPARE(field->palette().color(QPalette::Text), QColor(0xC0, 0, 0));
}

/// Tells whether the field of a spin box got a style sheet when the box went.
class FieldWatch : public QObject
{
public:
    explicit FieldWatch(const QSpinBox &box) { box.findChild<QLineEdit *>()->installEventFilter(this); }
    bool isForgotten = false;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *field = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::StyleChange && field && !field->styleSheet().isEmpty())
            isForgotten = true;
        return false;
    }
};

void TstWidgetStyle::spinBoxesOfStripsForgetTheirFields()
{
    VirtualTime time;
    auto filter = std::make_unique<FilterSpinBox>(time);
    auto thermo = std::make_unique<CustomT3SpinBox>();
    for (QSpinBox *box : {static_cast<QSpinBox *>(filter.get()), static_cast<QSpinBox *>(thermo.get())}) {
        box->show();
        setStyleIfChanged(*box, QStringLiteral("color:black"));
    }
    FieldWatch ofFilter(*filter);
    FieldWatch ofThermo(*thermo);
    filter.reset();
    thermo.reset();
    QVERIFY(ofFilter.isForgotten);
    QVERIFY(ofThermo.isForgotten);
}

QTEST_MAIN(TstWidgetStyle)

#include "tst_widgetstyle.moc"
