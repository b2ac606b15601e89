#include "modules/common/widgetstyle.h"

#include <QLabel>
#include <QtTest>

class TstWidgetStyle : public QObject
{
    Q_OBJECT

private slots:
    void otherFontIsSet();
    void fontOfTheApplicationIsNotSetAgain();
    void fontOfTheParentIsNotSetAgain();
    void styleIsSetOnce();
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

QTEST_MAIN(TstWidgetStyle)

#include "tst_widgetstyle.moc"
