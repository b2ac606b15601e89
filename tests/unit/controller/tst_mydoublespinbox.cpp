#include "controller/mydoublespinbox.h"

#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QtTest>
#include <functional>
#include <initializer_list>

namespace {

/// A box as the one of the output voltage, on screen, with its signals noted in order: "user 12.1".
class Box
{
public:
    Box()
    {
        box.setRange(5.0, 20.0);
        box.setSingleStep(0.1);
        box.setDecimals(1);
        QObject::connect(&box, &MyDoubleSpinBox::valueChangedByUser, &box, note("user"));
        QObject::connect(&box, &MyDoubleSpinBox::valueChangedByCode, &box, note("code"));
        box.show();
        box.setFocus();
    }

    QStringList take()
    {
        QStringList texts;
        texts.swap(m_texts);
        return texts;
    }

    void clickArrow(QStyle::SubControl arrow)
    {
        QStyleOptionSpinBox option;
        option.initFrom(&box);
        option.subControls = QStyle::SC_All;
        option.frame = box.hasFrame();
        const QRect place = box.style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, &box);
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, place.center());
    }

    MyDoubleSpinBox box;

private:
    std::function<void(double)> note(const char *who)
    {
        return [this, who](double value) {
            m_texts.append(QString::fromLatin1(who) + QLatin1Char(' ') + QString::number(value, 'f', 1));
        };
    }

    QStringList m_texts;
};

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList all;
    for (const char *text : texts)
        all.append(QString::fromLatin1(text));
    return all;
}

const QStringList kNothing;

} // namespace

class TstMyDoubleSpinBox : public QObject
{
    Q_OBJECT

private slots:
    void keysAreTheUsers();
    void arrowsAreTheUsers();
    void typingIsTheUsers();
    void firstChangeIsTheUsers();
    void valueByCodeIsTheProgrammes();
    void userIsHeardAgainAfterAChangeByCode();
    void valueByCodeIsBroughtIntoTheRange();
    void sameValueByCodeSwallowsTheUsersNextChange();
    void sameValueTwiceByCodeSwallowsOneChangeOnly();
    void valueOutsideTheRangeMayBeTheSameValue();
    void markIsClearedByTheNextChangeByCode();
    void plainSetValueIsTheUsers();
    void codeWhileTypingReplacesTheText();
    void codeWhileTypingReplacesTheTextEvenByTheSameValue();
};

void TstMyDoubleSpinBox::keysAreTheUsers()
{
    Box b;
    b.box.setValueByCode(12);
    b.take();
    QTest::keyClick(&b.box, Qt::Key_Up);
    QTest::keyClick(&b.box, Qt::Key_Up);
    QTest::keyClick(&b.box, Qt::Key_Down);
    QTest::keyClick(&b.box, Qt::Key_PageUp);
    QCOMPARE(b.take(), list({"user 12.1", "user 12.2", "user 12.1", "user 13.1"}));
}

void TstMyDoubleSpinBox::arrowsAreTheUsers()
{
    Box b;
    b.box.setValueByCode(12);
    b.take();
    b.clickArrow(QStyle::SC_SpinBoxUp);
    QCOMPARE(b.take(), list({"user 12.1"}));
    b.clickArrow(QStyle::SC_SpinBoxDown);
    QCOMPARE(b.take(), list({"user 12.0"}));
}

void TstMyDoubleSpinBox::typingIsTheUsers()
{
    Box b;
    b.box.setValueByCode(9);
    b.take();
    b.box.selectAll();
    QTest::keyClicks(&b.box, QStringLiteral("12.3"));
    QTest::keyClick(&b.box, Qt::Key_Return);
    const QStringList changes = b.take();
    QVERIFY(!changes.isEmpty());
    QCOMPARE(changes.last(), QStringLiteral("user 12.3"));
    QVERIFY(changes.filter(QStringLiteral("code")).isEmpty());
}

void TstMyDoubleSpinBox::firstChangeIsTheUsers()
{
    Box b;
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.take(), list({"user 5.1"}));
}

void TstMyDoubleSpinBox::valueByCodeIsTheProgrammes()
{
    Box b;
    b.box.setValueByCode(12.3);
    QCOMPARE(b.take(), list({"code 12.3"}));
    QCOMPARE(b.box.text(), QStringLiteral("12.3"));
}

void TstMyDoubleSpinBox::userIsHeardAgainAfterAChangeByCode()
{
    Box b;
    b.box.setValueByCode(12);
    QTest::keyClick(&b.box, Qt::Key_Up);
    b.box.setValueByCode(9);
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.take(), list({"code 12.0", "user 12.1", "code 9.0", "user 9.1"}));
}

void TstMyDoubleSpinBox::valueByCodeIsBroughtIntoTheRange()
{
    Box b;
    b.box.setValueByCode(65);
    QCOMPARE(b.take(), list({"code 20.0"}));
    b.box.setValueByCode(-1);
    QCOMPARE(b.take(), list({"code 5.0"}));
    b.box.setValueByCode(7.06);
    QCOMPARE(b.take(), list({"code 7.1"}));
}

void TstMyDoubleSpinBox::sameValueByCodeSwallowsTheUsersNextChange()
{
    Box b;
    b.box.setValueByCode(12);
    b.box.setValueByCode(12);
    QCOMPARE(b.take(), list({"code 12.0"}));
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.take(), list({"code 12.1"}));
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.take(), list({"user 12.2"}));
}

void TstMyDoubleSpinBox::sameValueTwiceByCodeSwallowsOneChangeOnly()
{
    Box b;
    for (int i = 0; i < 3; ++i)
        b.box.setValueByCode(5); // the value of the start
    QCOMPARE(b.take(), kNothing);
    QTest::keyClick(&b.box, Qt::Key_Up);
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.take(), list({"code 5.1", "user 5.2"}));
}

void TstMyDoubleSpinBox::valueOutsideTheRangeMayBeTheSameValue()
{
    Box b;
    b.box.setValueByCode(20);
    b.take();
    b.box.setValueByCode(30);
    QCOMPARE(b.take(), kNothing);
    QTest::keyClick(&b.box, Qt::Key_Down);
    QTest::keyClick(&b.box, Qt::Key_Down);
    QCOMPARE(b.take(), list({"code 19.9", "user 19.8"}));
}

void TstMyDoubleSpinBox::markIsClearedByTheNextChangeByCode()
{
    Box b;
    b.box.setValueByCode(12);
    b.box.setValueByCode(12);
    b.box.setValueByCode(9);
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.take(), list({"code 12.0", "code 9.0", "user 9.1"}));
}

void TstMyDoubleSpinBox::plainSetValueIsTheUsers()
{
    Box b;
    b.box.setValue(12);
    QCOMPARE(b.take(), list({"user 12.0"}));
}

void TstMyDoubleSpinBox::codeWhileTypingReplacesTheText()
{
    Box b;
    b.box.setValueByCode(12);
    b.take();
    b.box.selectAll();
    QTest::keyClicks(&b.box, QStringLiteral("1"));
    QCOMPARE(b.box.findChild<QLineEdit *>()->text(), QStringLiteral("1"));
    b.box.setValueByCode(9);
    QCOMPARE(b.box.findChild<QLineEdit *>()->text(), QStringLiteral("9.0"));
    QCOMPARE(b.take(), list({"code 9.0"}));
}

void TstMyDoubleSpinBox::codeWhileTypingReplacesTheTextEvenByTheSameValue()
{
    Box b;
    b.box.setValueByCode(12);
    b.take();
    b.box.selectAll();
    QTest::keyClicks(&b.box, QStringLiteral("1"));
    b.box.setValueByCode(12);
    QCOMPARE(b.box.findChild<QLineEdit *>()->text(), QStringLiteral("12.0"));
    QCOMPARE(b.take(), kNothing);
}

QTEST_MAIN(TstMyDoubleSpinBox)
#include "tst_mydoublespinbox.moc"
