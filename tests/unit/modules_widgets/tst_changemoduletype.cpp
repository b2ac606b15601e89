#include "modules/widgets/changemoduletype.h"

#include "dialoglook.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

namespace {

const QString kIepe = QString::fromUtf8("IEPE/ICP\xC2\xAE");
const QString kUnknownLine = QStringLiteral("Unknown Channel type");
const QString kToggledLine = QStringLiteral("Button Toggled");

} // namespace

class TstChangeModuleType : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowIsAsAgreed();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void controlsAreNamed();
    void tabOrderFollowsReadingOrder();

    void titleNamesTheChannel_data();
    void titleNamesTheChannel();
    void functionIsChecked_data();
    void functionIsChecked();
    void unknownFunctionIsLogged_data();
    void unknownFunctionIsLogged();
    void shortListIsTakenAsEmpty();
    void openingDoesNotBlock();
    void openingAgainShowsTheOtherChannel();

    void supplyIsDisabled();
    void choiceIsLoggedAndSwitchesTheSupplyOff();
    void presetsDoNothing();
    void supplyIsSentWithItsCode_data();
    void supplyIsSentWithItsCode();

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

    void cancelSendsNothing();
    void escapeSendsNothing();
    void closingSendsNothing();

    void returnConfirms_data();
    void returnConfirms();
    void keysOfOkConfirm_data();
    void keysOfOkConfirm();
    void shiftKeysOfOkGoToAllChannels_data();
    void shiftKeysOfOkGoToAllChannels();
    void shiftReturnElsewhereDoesNothing();
    void repeatedKeyConfirmsNothing();
    void keysOfCancelReject();
    void functionIsChosenByKeys();

    void parentMayGoWhileTheDialogIsOpen();

private:
    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(m_dialog.get(), name);
    }
    QPushButton *ok() const { return child<QPushButton>("OkBtn"); }
    QString checked() const;
    void open(const QString &function, const QString &number = QStringLiteral("7"));
    void choose(const char *button);
    void sendKey(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat);

    std::unique_ptr<ChangeModuleType> m_dialog;
    QStringList m_events; ///< signals of the dialog, in their order
};

void TstChangeModuleType::init()
{
    m_dialog = std::make_unique<ChangeModuleType>();
    m_events.clear();
    connect(m_dialog.get(), &ChangeModuleType::moduleSelected, this, [this](uchar channel, uchar type) {
        m_events.append(QStringLiteral("function %1 %2").arg(channel).arg(type));
        m_events.append(m_dialog->isVisible() ? "shown" : "hidden");
    });
    connect(m_dialog.get(), &ChangeModuleType::voltageSupply, this,
            [this](uchar channel, uchar on, uchar code) {
                m_events.append(QStringLiteral("supply %1 %2 %3").arg(channel).arg(on).arg(code));
            });
    connect(m_dialog.get(), &ChangeModuleType::Signal_ShiftClickCommand, this, [this](GroupCommand command) {
        m_events.append(
            QStringLiteral("group %1 %2 %3").arg(command.moduleType).arg(command.command).arg(command.value));
        m_events.append(m_dialog->isVisible() ? "shown" : "hidden");
    });
}

void TstChangeModuleType::cleanup()
{
    m_dialog.reset();
    dialoglook::resetFont();
}

QString TstChangeModuleType::checked() const
{
    const QAbstractButton *button = m_dialog->findChild<QButtonGroup *>("modulesGrp")->checkedButton();
    return button ? button->objectName() : QString();
}

void TstChangeModuleType::open(const QString &function, const QString &number)
{
    m_dialog->Slot_Channel({function, QStringLiteral("Voltage"), number});
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void TstChangeModuleType::choose(const char *button)
{
    auto *radio = child<QRadioButton>(button);
    QTest::mouseClick(radio, Qt::LeftButton, Qt::NoModifier, QPoint(8, radio->height() / 2));
}

void TstChangeModuleType::sendKey(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), repeat);
    QApplication::sendEvent(widget, &event);
}

void TstChangeModuleType::windowIsAsAgreed()
{
    open("Voltage");
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Modify Channel Function"));
    QCOMPARE(m_dialog->windowFlags() & ~Qt::WindowFlags(Qt::WindowTitleHint | Qt::WindowSystemMenuHint),
             Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(child<QRadioButton>("strainGBtn")->text(), QStringLiteral("Strain Gauge"));
    QCOMPARE(child<QRadioButton>("potBtn")->text(), QStringLiteral("Potentiometer"));
    QCOMPARE(child<QRadioButton>("voltageBtn")->text(), QStringLiteral("Voltage"));
    QCOMPARE(child<QRadioButton>("iepeBtn")->text(), kIepe);
    QCOMPARE(child<QPushButton>("Preset5V")->text(), QStringLiteral("Preset 5V"));
    QCOMPARE(child<QPushButton>("Preset12V")->text(), QStringLiteral("Preset 12V"));
    QCOMPARE(child<QCheckBox>("supplyVoltCheckBx")->text(), QStringLiteral("Ext. Sensor Supply"));
    QCOMPARE(child<QPushButton>("OkBtn")->text(), QStringLiteral("Ok"));
    QCOMPARE(child<QPushButton>("CancelBtn")->text(), QStringLiteral("Cancel"));
    const auto widgets = m_dialog->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        QCOMPARE(widget->font().family(), QStringLiteral("Segoe UI"));
        QCOMPARE(widget->font().pixelSize(), 12);
    }
}

void TstChangeModuleType::nothingIsClipped_data()
{
    dialoglook::addFonts();
}

void TstChangeModuleType::nothingIsClipped()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "scripts/install brings this font");
    m_dialog = std::make_unique<ChangeModuleType>();
    open("Voltage", "256");
    QCOMPARE(dialoglook::clipped(*m_dialog), QStringList());
    const auto *group = child<QGroupBox>("groupBox");
    QVERIFY(group->width() >= group->fontMetrics().horizontalAdvance(group->title()) + 10);
}

void TstChangeModuleType::controlsAreNamed()
{
    QCOMPARE(dialoglook::withoutAccessibleName(*m_dialog), QStringList());
}

void TstChangeModuleType::tabOrderFollowsReadingOrder()
{
    open("Voltage");
    child<QRadioButton>("voltageBtn")->setFocus();
    // Of the radio buttons Tab visits the checked one; the supply controls are disabled.
    QCOMPARE(dialoglook::tabOrder(*m_dialog), (QStringList{"voltageBtn", "OkBtn", "CancelBtn"}));
    for (const char *name : {"Preset5V", "Preset12V", "VoltValEditBox", "supplyVoltCheckBx"})
        child<QWidget>(name)->setEnabled(true);
    child<QRadioButton>("voltageBtn")->setFocus();
    QCOMPARE(dialoglook::tabOrder(*m_dialog),
             (QStringList{"voltageBtn", "Preset5V", "Preset12V", "VoltValEditBox", "supplyVoltCheckBx",
                          "OkBtn", "CancelBtn"}));
}

void TstChangeModuleType::titleNamesTheChannel_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("title");
    QTest::newRow("first") << "1"
                           << "ANALOG Module, Channel 1";
    QTest::newRow("last") << "256"
                          << "ANALOG Module, Channel 256";
    QTest::newRow("largest of 16 bits") << "65535"
                                        << "ANALOG Module, Channel 65535";
    QTest::newRow("beyond 16 bits") << "65536"
                                    << "ANALOG Module, Channel 0";
    QTest::newRow("no number") << "x"
                               << "ANALOG Module, Channel 0";
}

void TstChangeModuleType::titleNamesTheChannel()
{
    QFETCH(QString, number);
    open("Voltage", number);
    QTEST(child<QGroupBox>("groupBox")->title(), "title");
}

void TstChangeModuleType::functionIsChecked_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("button");
    QTest::newRow("1") << "Strain Gauge"
                       << "strainGBtn";
    QTest::newRow("2") << "Voltage"
                       << "voltageBtn";
    QTest::newRow("3") << kIepe << "iepeBtn";
    QTest::newRow("6") << "Potentiometer"
                       << "potBtn";
}

void TstChangeModuleType::functionIsChecked()
{
    QFETCH(QString, function);
    const MessageCatcher log;
    open(function);
    QTEST(checked(), "button");
    QCOMPARE(log.lines(QtDebugMsg), QStringList{kToggledLine});
    QCOMPARE(m_events, QStringList());
}

void TstChangeModuleType::unknownFunctionIsLogged_data()
{
    QTest::addColumn<QString>("function");
    for (const char *function : {"Unknown", "Thermo", "XVDT", "Analog", "", "?"})
        QTest::newRow(function) << QString::fromLatin1(function);
}

void TstChangeModuleType::unknownFunctionIsLogged()
{
    QFETCH(QString, function);
    const MessageCatcher log;
    open(function);
    QCOMPARE(log.lines(QtDebugMsg), (QStringList{kUnknownLine, kToggledLine}));
    QCOMPARE(checked(), QString());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::shortListIsTakenAsEmpty()
{
    m_dialog->Slot_Channel({});
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(child<QGroupBox>("groupBox")->title(), QStringLiteral("ANALOG Module, Channel 0"));
}

void TstChangeModuleType::openingDoesNotBlock()
{
    m_dialog->Slot_Channel({"Voltage", "Voltage", "1"}); // returns
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(m_dialog->windowModality(), Qt::ApplicationModal);
}

void TstChangeModuleType::openingAgainShowsTheOtherChannel()
{
    open("Voltage", "7");
    QTest::mouseClick(child<QPushButton>("CancelBtn"), Qt::LeftButton);
    open(kIepe, "8");
    QCOMPARE(checked(), QStringLiteral("iepeBtn"));
    QTest::mousePress(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{"function 8 3", "hidden"}));
}

void TstChangeModuleType::supplyIsDisabled()
{
    child<QCheckBox>("supplyVoltCheckBx")->setChecked(true);
    open("Voltage");
    QVERIFY(!child<QLineEdit>("VoltValEditBox")->isEnabled());
    QVERIFY(!child<QCheckBox>("supplyVoltCheckBx")->isEnabled());
    QVERIFY(!child<QCheckBox>("supplyVoltCheckBx")->isChecked());
    QTest::mouseClick(child<QCheckBox>("supplyVoltCheckBx"), Qt::LeftButton);
    QCOMPARE(m_events, QStringList());
}

void TstChangeModuleType::choiceIsLoggedAndSwitchesTheSupplyOff()
{
    open("Voltage");
    child<QLineEdit>("VoltValEditBox")->setEnabled(true);
    child<QCheckBox>("supplyVoltCheckBx")->setEnabled(true);
    child<QCheckBox>("supplyVoltCheckBx")->setChecked(true);
    const MessageCatcher log;
    choose("potBtn");
    QCOMPARE(log.lines(QtDebugMsg), QStringList{kToggledLine});
    QVERIFY(!child<QLineEdit>("VoltValEditBox")->isEnabled());
    QVERIFY(!child<QCheckBox>("supplyVoltCheckBx")->isEnabled());
    QVERIFY(!child<QCheckBox>("supplyVoltCheckBx")->isChecked());
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::presetsDoNothing()
{
    open("Voltage");
    for (const char *name : {"Preset5V", "Preset12V"}) {
        auto *preset = child<QPushButton>(name);
        QVERIFY(!preset->isEnabled());
        preset->setEnabled(true);
        QTest::mouseClick(preset, Qt::LeftButton);
    }
    QCOMPARE(child<QLineEdit>("VoltValEditBox")->text(), QString());
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::supplyIsSentWithItsCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("wasOn");
    QTest::addColumn<QString>("expected");
    QTest::newRow("12 V on") << "12" << false << "supply 7 1 90";
    QTest::newRow("12 V off") << "12" << true << "supply 7 0 90";
    QTest::newRow("empty on") << "" << false << "supply 7 1 0";
    QTest::newRow("low byte of 256") << "28.6" << false << "supply 7 1 0";
    QTest::newRow("low byte of 65506") << "abc" << false << "supply 7 1 226";
}

void TstChangeModuleType::supplyIsSentWithItsCode()
{
    QFETCH(QString, text);
    QFETCH(bool, wasOn);
    QFETCH(QString, expected);
    open("Voltage");
    auto *box = child<QCheckBox>("supplyVoltCheckBx");
    auto *edit = child<QLineEdit>("VoltValEditBox");
    edit->setEnabled(true);
    edit->setText(text);
    box->setEnabled(true);
    box->setChecked(wasOn);
    QCOMPARE(m_events, QStringList());
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    QCOMPARE(m_events, QStringList{expected});
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::okSendsTheFunction_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("expected");
    QTest::newRow("strain gauge") << QByteArray("strainGBtn") << "function 7 1";
    QTest::newRow("voltage") << QByteArray("voltageBtn") << "function 7 2";
    QTest::newRow("IEPE") << QByteArray("iepeBtn") << "function 7 3";
    QTest::newRow("potentiometer") << QByteArray("potBtn") << "function 7 6";
}

void TstChangeModuleType::okSendsTheFunction()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, expected);
    open("Thermo");
    choose(button.constData());
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{expected, "hidden"}));
}

void TstChangeModuleType::okActsWhenPressed()
{
    open("Voltage");
    QTest::mousePress(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(ok()->isDown()); // the press went on to the button
}

void TstChangeModuleType::secondPressOfAQuickPairActs_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << Qt::KeyboardModifiers() << "function 7 2";
    QTest::newRow("shift") << Qt::KeyboardModifiers(Qt::ShiftModifier) << "group 9 4 2";
}

void TstChangeModuleType::secondPressOfAQuickPairActs()
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

void TstChangeModuleType::okIsUpWhenTheDialogIsShownAgain()
{
    open("Voltage");
    QTest::mousePress(ok(), Qt::LeftButton); // the release goes elsewhere
    open("Voltage");
    QVERIFY(!ok()->isDown());
}

void TstChangeModuleType::clickOfOkSendsOnce()
{
    open("Voltage");
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_events.filter("function").size(), 1);
    open("Voltage");
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_events.filter("function").size(), 2);
}

void TstChangeModuleType::clickWithoutAPressDoesNothing()
{
    open("Voltage");
    ok()->click();
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::shiftOkGoesToAllChannels_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("expected");
    QTest::newRow("strain gauge") << QByteArray("strainGBtn") << "group 9 4 1";
    QTest::newRow("voltage") << QByteArray("voltageBtn") << "group 9 4 2";
    QTest::newRow("IEPE") << QByteArray("iepeBtn") << "group 9 4 3";
    QTest::newRow("potentiometer") << QByteArray("potBtn") << "group 9 4 6";
}

void TstChangeModuleType::shiftOkGoesToAllChannels()
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

void TstChangeModuleType::otherModifiersSendToTheChannel_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("shift and ctrl") << (Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("shift and alt") << (Qt::ShiftModifier | Qt::AltModifier);
}

void TstChangeModuleType::otherModifiersSendToTheChannel()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open("Voltage");
    QTest::mouseClick(ok(), Qt::LeftButton, modifiers);
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
}

void TstChangeModuleType::withoutAChoiceOkOnlyHides_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("plain") << Qt::KeyboardModifiers();
    QTest::newRow("shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void TstChangeModuleType::withoutAChoiceOkOnlyHides()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open("Thermo");
    QTest::mouseClick(ok(), Qt::LeftButton, modifiers);
    QCOMPARE(m_events, QStringList());
    QVERIFY(!m_dialog->isVisible());
}

void TstChangeModuleType::numberBeyondAByteIsCut()
{
    open("Voltage", "256");
    QTest::mousePress(ok(), Qt::LeftButton);
    QCOMPARE(m_events, (QStringList{"function 0 2", "hidden"}));
}

void TstChangeModuleType::cancelSendsNothing()
{
    open("Voltage");
    const QSignalSpy rejected(m_dialog.get(), &QDialog::rejected);
    QTest::mouseClick(child<QPushButton>("CancelBtn"), Qt::LeftButton);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_events, QStringList());
}

void TstChangeModuleType::escapeSendsNothing()
{
    open("Voltage");
    QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_events, QStringList());
}

void TstChangeModuleType::closingSendsNothing()
{
    open("Voltage");
    QVERIFY(m_dialog->close());
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_events, QStringList());
}

void TstChangeModuleType::returnConfirms_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("return") << int(Qt::Key_Return) << Qt::KeyboardModifiers();
    QTest::newRow("enter") << int(Qt::Key_Enter) << Qt::KeyboardModifiers(Qt::KeypadModifier);
}

void TstChangeModuleType::returnConfirms()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open("Voltage");
    QVERIFY(ok()->isDefault());
    child<QRadioButton>("voltageBtn")->setFocus();
    QTest::keyClick(child<QRadioButton>("voltageBtn"), static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
}

void TstChangeModuleType::keysOfOkConfirm_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void TstChangeModuleType::keysOfOkConfirm()
{
    QFETCH(int, key);
    open("Voltage");
    ok()->setFocus();
    QTest::keyClick(ok(), static_cast<Qt::Key>(key));
    QCOMPARE(m_events, (QStringList{"function 7 2", "hidden"}));
}

void TstChangeModuleType::shiftKeysOfOkGoToAllChannels_data()
{
    keysOfOkConfirm_data();
}

void TstChangeModuleType::shiftKeysOfOkGoToAllChannels()
{
    QFETCH(int, key);
    open("Voltage");
    ok()->setFocus();
    QTest::keyClick(ok(), static_cast<Qt::Key>(key), Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"group 9 4 2", "hidden"}));
}

void TstChangeModuleType::shiftReturnElsewhereDoesNothing()
{
    open("Voltage");
    QTest::keyClick(child<QRadioButton>("voltageBtn"), Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::repeatedKeyConfirmsNothing()
{
    open("Voltage");
    for (QWidget *widget : {static_cast<QWidget *>(ok()), child<QWidget>("voltageBtn")}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
            sendKey(widget, key, Qt::NoModifier, true);
    }
    QCOMPARE(m_events, QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TstChangeModuleType::keysOfCancelReject()
{
    open("Voltage");
    child<QPushButton>("CancelBtn")->setFocus();
    QTest::keyClick(child<QPushButton>("CancelBtn"), Qt::Key_Return);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_events, QStringList());
}

void TstChangeModuleType::functionIsChosenByKeys()
{
    open("Voltage");
    child<QRadioButton>("voltageBtn")->setFocus();
    QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Down);
    QCOMPARE(m_dialog->focusWidget()->objectName(), QStringLiteral("iepeBtn"));
    QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Space);
    QCOMPARE(checked(), QStringLiteral("iepeBtn"));
    QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Return);
    QCOMPARE(m_events, (QStringList{"function 7 3", "hidden"}));
}

void TstChangeModuleType::parentMayGoWhileTheDialogIsOpen()
{
    auto row = std::make_unique<QWidget>();
    const QPointer<ChangeModuleType> dialog(new ChangeModuleType(row.get()));
    const QSignalSpy selected(dialog, &ChangeModuleType::moduleSelected);
    row->show();
    dialog->Slot_Channel({"Voltage", "Voltage", "1"});
    QVERIFY(dialog->isVisible());
    row.reset();
    QVERIFY(!dialog);
    QCOMPARE(selected.count(), 0);
}

QTEST_MAIN(TstChangeModuleType)
#include "tst_changemoduletype.moc"
