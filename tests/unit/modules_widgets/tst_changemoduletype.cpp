#include "functiondialogtest.h"

#include "support/dialoglook.h"
#include "support/messagecatcher.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>

namespace {

const QString kUnknownLine = QStringLiteral("Unknown Channel type");
const QString kToggledLine = QStringLiteral("Button Toggled");

} // namespace

/// What the function dialog shows, how it is opened and how it is left without a word.
class TstChangeModuleType : public FunctionDialogTest
{
    Q_OBJECT

private slots:
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

    void cancelSendsNothing();
    void escapeSendsNothing();
    void closingSendsNothing();

    void keysOfCancelReject();
    void functionIsChosenByKeys();

    void parentMayGoWhileTheDialogIsOpen();
};

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
