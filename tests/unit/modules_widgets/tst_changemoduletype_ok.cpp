#include "functiondialogtest.h"

#include <QRadioButton>

/// How a function is confirmed, by the mouse and by the keys.
class TstChangeModuleTypeOk : public FunctionDialogTest
{
    Q_OBJECT

private slots:
    void okSendsTheFunction_data();
    void okSendsTheFunction();
    void okActsWhenPressed();
    void secondPressOfAQuickPairActs_data();
    void secondPressOfAQuickPairActs();
    void okIsUpWhenTheDialogIsShownAgain();
    void clickOfOkSendsOnce();
    void clickWithoutAPressDoesNothing();
    void shiftOkGoesToAllChannels_data();
    void shiftOkGoesToAllChannels();
    void otherModifiersSendToTheChannel_data();
    void otherModifiersSendToTheChannel();
    void withoutAChoiceOkOnlyHides_data();
    void withoutAChoiceOkOnlyHides();
    void numberBeyondAByteIsCut();

    void returnConfirms_data();
    void returnConfirms();
    void keysOfOkConfirm_data();
    void keysOfOkConfirm();
    void shiftKeysOfOkGoToAllChannels_data();
    void shiftKeysOfOkGoToAllChannels();
    void shiftReturnElsewhereDoesNothing();
    void repeatedKeyConfirmsNothing();
};

void TstChangeModuleTypeOk::okSendsTheFunction_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("expected");
    QTest::newRow("strain gauge") << QByteArray("strainGBtn") << "function 7 1";
    QTest::newRow("voltage") << QByteArray("voltageBtn") << "function 7 2";
    QTest::newRow("IEPE") << QByteArray("iepeBtn") << "function 7 3";
    QTest::newRow("potentiometer") << QByteArray("potBtn") << "function 7 6";
}

void TstChangeModuleTypeOk::okSendsTheFunction()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, expected);
    open("Thermo");
    choose(button.constData());
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{expected, "hidden"}));
}

void TstChangeModuleTypeOk::okActsWhenPressed()
{
    open("Voltage");
    QTest::mousePress(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(ok()->isDown()); // the press went on to the button
}

void TstChangeModuleTypeOk::secondPressOfAQuickPairActs_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << Qt::KeyboardModifiers() << "function 7 2";
    QTest::newRow("shift") << Qt::KeyboardModifiers(Qt::ShiftModifier) << "group 9 4 2";
}

void TstChangeModuleTypeOk::secondPressOfAQuickPairActs()
{
    // The first press of the pair opened the dialog.
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, expected);
    open("Voltage");
    const QPoint place = ok()->rect().center();
    QMouseEvent press(QEvent::MouseButtonDblClick, place, ok()->mapToGlobal(place), Qt::LeftButton,
                      Qt::LeftButton, modifiers);
    QApplication::sendEvent(ok(), &press);
    QCOMPARE(m_events, (QStringList{expected, "hidden"}));
}

void TstChangeModuleTypeOk::okIsUpWhenTheDialogIsShownAgain()
{
    open("Voltage");
    QTest::mousePress(ok(), Qt::LeftButton); // the release goes elsewhere
    open("Voltage");
    QVERIFY(!ok()->isDown());
}

void TstChangeModuleTypeOk::clickOfOkSendsOnce()
{
    open("Voltage");
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_events.filter("function").size(), 1);
    open("Voltage");
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_events.filter("function").size(), 2);
}

void TstChangeModuleTypeOk::clickWithoutAPressDoesNothing()
{
    open("Voltage");
    ok()->click();
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleTypeOk::shiftOkGoesToAllChannels_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("expected");
    QTest::newRow("strain gauge") << QByteArray("strainGBtn") << "group 9 4 1";
    QTest::newRow("voltage") << QByteArray("voltageBtn") << "group 9 4 2";
    QTest::newRow("IEPE") << QByteArray("iepeBtn") << "group 9 4 3";
    QTest::newRow("potentiometer") << QByteArray("potBtn") << "group 9 4 6";
}

void TstChangeModuleTypeOk::shiftOkGoesToAllChannels()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, expected);
    open("Thermo");
    choose(button.constData());
    QTest::mousePress(ok(), Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(!ok()->isDown()); // the press was swallowed
    QTest::mouseRelease(ok(), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{expected, "hidden"}));
    QVERIFY(!m_dialog->isVisible());
}

void TstChangeModuleTypeOk::otherModifiersSendToTheChannel_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("shift and ctrl") << (Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("shift and alt") << (Qt::ShiftModifier | Qt::AltModifier);
}

void TstChangeModuleTypeOk::otherModifiersSendToTheChannel()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open("Voltage");
    QTest::mouseClick(ok(), Qt::LeftButton, modifiers);
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
}

void TstChangeModuleTypeOk::withoutAChoiceOkOnlyHides_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("plain") << Qt::KeyboardModifiers();
    QTest::newRow("shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void TstChangeModuleTypeOk::withoutAChoiceOkOnlyHides()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open("Thermo");
    QTest::mouseClick(ok(), Qt::LeftButton, modifiers);
    QCOMPARE(m_events, QStringList());
    QVERIFY(!m_dialog->isVisible());
}

void TstChangeModuleTypeOk::numberBeyondAByteIsCut()
{
    open("Voltage", "256");
    QTest::mousePress(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{"function 0 2", "hidden"}));
}

void TstChangeModuleTypeOk::returnConfirms_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("return") << int(Qt::Key_Return) << Qt::KeyboardModifiers();
    QTest::newRow("enter") << int(Qt::Key_Enter) << Qt::KeyboardModifiers(Qt::KeypadModifier);
}

void TstChangeModuleTypeOk::returnConfirms()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open("Voltage");
    QVERIFY(ok()->isDefault());
    child<QRadioButton>("voltageBtn")->setFocus();
    QTest::keyClick(child<QRadioButton>("voltageBtn"), static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
}

void TstChangeModuleTypeOk::keysOfOkConfirm_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void TstChangeModuleTypeOk::keysOfOkConfirm()
{
    QFETCH(int, key);
    open("Voltage");
    ok()->setFocus();
    QTest::keyClick(ok(), static_cast<Qt::Key>(key));
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
}

void TstChangeModuleTypeOk::shiftKeysOfOkGoToAllChannels_data()
{
    keysOfOkConfirm_data();
}

void TstChangeModuleTypeOk::shiftKeysOfOkGoToAllChannels()
{
    QFETCH(int, key);
    open("Voltage");
    ok()->setFocus();
    QTest::keyClick(ok(), static_cast<Qt::Key>(key), Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"group 9 4 2", "hidden"}));
}

void TstChangeModuleTypeOk::shiftReturnElsewhereDoesNothing()
{
    open("Voltage");
    QTest::keyClick(child<QRadioButton>("voltageBtn"), Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleTypeOk::repeatedKeyConfirmsNothing()
{
    open("Voltage");
    for (QWidget *widget : {static_cast<QWidget *>(ok()), child<QWidget>("voltageBtn")}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
            sendKey(widget, key, Qt::NoModifier, true);
    }
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

QTEST_MAIN(TstChangeModuleTypeOk)
#include "tst_changemoduletype_ok.moc"
