#include "base/gui/fonts.h"
#include "familymodule.h"
#include "modules/moduledevicetype4_ctrllr.h"
#include "support/messagecatcher.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QPointer>

namespace {

/// A universal module, number 3, with channel 5 (A) and channel 6 (B).
class UniversalModule : public FamilyModule
{
public:
    UniversalModule(int functionA, int functionB)
        : FamilyModule(9)
    {
        device.functionCodeA = static_cast<quint8>(functionA);
        device.functionCodeB = static_cast<quint8>(functionB);
        begin();
    }

    void clickChannel(Channel channel)
    {
        QTest::mouseClick(
            childByName<QPushButton>(&row(), channel == Channel::A ? "pushButton_ChA" : "pushButton_ChB"),
            Qt::LeftButton);
    }

    /// The dialog of the channel buttons, if it stands open alone.
    QDialog *dialog() const
    {
        const auto open = openDialogs();
        return open.size() == 1 ? open.first() : nullptr;
    }

    QAbstractButton *inDialog(const char *name) const { return childByName<QAbstractButton>(dialog(), name); }

    void choose(const char *radioButton) { clickRadio(dialog(), radioButton); }

    void pressOk(Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(inDialog("OkBtn"), Qt::LeftButton, keys);
        time.turn();
    }

    QString nameOfChannel(Channel channel) const
    {
        return text(channel == Channel::A ? "ChDeviceLabel_A" : "ChDeviceLabel_B");
    }

    /// Whether the controls and headers of the channel can be seen: "shown", "hidden", or which can.
    QString visibility(Channel channel) const
    {
        QStringList visible;
        int count = 0;
        for (const char *name : {"Channel", "FirstInfoDevice", "SecondInfoDevice", "Filter", "RevPol"}) {
            const QByteArray whole = QByteArray("label_") + name + (channel == Channel::B ? "_2" : "");
            ++count;
            if (childByName<QWidget>(&row(), whole)->isVisible())
                visible << QString::fromLatin1(whole);
        }
        for (const QWidget *control :
             {static_cast<const QWidget *>(typeBox(channel)), static_cast<const QWidget *>(rangeBox(channel)),
              static_cast<const QWidget *>(filterBox(channel)),
              static_cast<const QWidget *>(polarityButton(channel)),
              static_cast<const QWidget *>(autozeroButton(channel))}) {
            ++count;
            if (control->isVisible())
                visible << control->objectName();
        }
        if (visible.isEmpty())
            return QStringLiteral("hidden");
        return visible.size() == count ? QStringLiteral("shown") : visible.join(QLatin1Char(' '));
    }
};

} // namespace

/// How the channels of a universal module get another function.
class TstModuleDeviceType4Functions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void channelButtonOpensTheDialogOverTheRow_data();
    void channelButtonOpensTheDialogOverTheRow();
    void dialogChecksTheFunctionOfTheChannel_data();
    void dialogChecksTheFunctionOfTheChannel();
    void unknownFunctionIsLoggedInTheDialog();
    void dialogDoesNotBlock();
    void okChangesTheFunction_data();
    void okChangesTheFunction();
    void okHidesTheChannelUntilTheNextStaticStatus_data();
    void okHidesTheChannelUntilTheNextStaticStatus();
    void cancelSendsNothing();
    void shiftOkSendsTheGroupCommandAndNoModuleSelected();
    void otherKeysOnOkChangeTheChannelAlone();
    void oddChannelNumberMeansA_data();
    void oddChannelNumberMeansA();
    void supplyControlsCannotBeReached();
    void statusUnderTheDialogSendsNothing();
    void dialogGoesWithTheController();
    void okAfterTheRowWasRetiredSendsNothing_data();
    void okAfterTheRowWasRetiredSendsNothing();
    void functionChangeAtARetiredRowSendsNothing();
    void unknownModuleHasNoDialog();
};

void TstModuleDeviceType4Functions::initTestCase()
{
    fonts::installSubstitutions();
}

void TstModuleDeviceType4Functions::channelButtonOpensTheDialogOverTheRow_data()
{
    QTest::addColumn<Channel>("channel");
    QTest::addColumn<QString>("title");
    QTest::newRow("A") << Channel::A << "ANALOG Module, Channel 5";
    QTest::newRow("B") << Channel::B << "ANALOG Module, Channel 6";
}

void TstModuleDeviceType4Functions::channelButtonOpensTheDialogOverTheRow()
{
    QFETCH(Channel, channel);
    UniversalModule module(2, 3);
    QVERIFY(module.openDialogs().isEmpty());
    module.clickChannel(channel);
    QVERIFY(module.dialog());
    QCOMPARE(module.dialog()->windowTitle(), QStringLiteral("Modify Channel Function"));
    QTEST(childByName<QGroupBox>(module.dialog(), "groupBox")->title(), "title");
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType4Functions::dialogChecksTheFunctionOfTheChannel_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("strain gauge") << 1 << QByteArray("strainGBtn");
    QTest::newRow("voltage") << 2 << QByteArray("voltageBtn");
    QTest::newRow("IEPE") << 3 << QByteArray("iepeBtn");
    QTest::newRow("potentiometer") << 6 << QByteArray("potBtn");
}

void TstModuleDeviceType4Functions::dialogChecksTheFunctionOfTheChannel()
{
    QFETCH(int, function);
    QFETCH(QByteArray, button);
    for (const Channel channel : kBothChannels) {
        const int other = function == 1 ? 2 : 1;
        UniversalModule module(channel == Channel::A ? function : other,
                               channel == Channel::B ? function : other);
        module.clickChannel(channel);
        QVERIFY(module.dialog());
        for (const char *name : {"strainGBtn", "potBtn", "voltageBtn", "iepeBtn"})
            QCOMPARE(module.inDialog(name)->isChecked(), button == name);
    }
}

void TstModuleDeviceType4Functions::unknownFunctionIsLoggedInTheDialog()
{
    UniversalModule module(5, 1);
    const MessageCatcher catcher;
    module.clickChannel(Channel::A);
    QVERIFY(module.dialog());
    QCOMPARE(catcher.lines(QtDebugMsg).filter(QStringLiteral("Unknown Channel type")).size(), 1);
    module.inDialog("CancelBtn")->click();
    module.clickChannel(Channel::B);
    QCOMPARE(catcher.lines(QtDebugMsg).filter(QStringLiteral("Unknown Channel type")).size(), 1);
}

void TstModuleDeviceType4Functions::dialogDoesNotBlock()
{
    UniversalModule module(2, 3);
    module.clickChannel(Channel::A);
    QVERIFY(module.dialog());
    module.report(ChannelParameter::TypeIndex, Channel::B, 2);
    QCOMPARE(module.shown(ChannelParameter::TypeIndex, Channel::B), QStringLiteral("2 black"));
    QVERIFY(module.dialog());
}

void TstModuleDeviceType4Functions::okChangesTheFunction_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    QTest::newRow("strain gauge") << QByteArray("strainGBtn") << 1 << "Strain Gauge";
    QTest::newRow("voltage") << QByteArray("voltageBtn") << 2 << "Voltage";
    QTest::newRow("IEPE") << QByteArray("iepeBtn") << 3 << QString::fromUtf8("IEPE/ICP®");
    QTest::newRow("potentiometer") << QByteArray("potBtn") << 6 << "Potentiometer";
}

void TstModuleDeviceType4Functions::okChangesTheFunction()
{
    QFETCH(QByteArray, button);
    QFETCH(int, code);
    QFETCH(QString, name);
    for (const Channel channel : kBothChannels) {
        UniversalModule module(code == 2 ? 3 : 2, code == 2 ? 3 : 2);
        module.clickChannel(channel);
        module.choose(button);
        QCOMPARE(module.takeSent(), QStringList());
        module.pressOk();
        QCOMPARE(module.takeSent(),
                 (QStringList{
                     QStringLiteral("change channel %1 to %2").arg(channel == Channel::A ? 5 : 6).arg(code),
                     "get 3"}));
        QCOMPARE(module.nameOfChannel(channel), name);
        QVERIFY(module.openDialogs().isEmpty());
        module.time.advance(5000);
        QCOMPARE(module.takeSent(), QStringList());
    }
}

void TstModuleDeviceType4Functions::okHidesTheChannelUntilTheNextStaticStatus_data()
{
    QTest::addColumn<Channel>("channel");
    QTest::newRow("A") << Channel::A;
    QTest::newRow("B") << Channel::B;
}

void TstModuleDeviceType4Functions::okHidesTheChannelUntilTheNextStaticStatus()
{
    QFETCH(Channel, channel);
    const Channel other = channel == Channel::A ? Channel::B : Channel::A;
    UniversalModule module(2, 2);
    QCOMPARE(module.visibility(channel), QStringLiteral("shown"));
    module.clickChannel(channel);
    module.choose("strainGBtn");
    module.pressOk();
    QCOMPARE(module.visibility(channel), QStringLiteral("hidden"));
    QCOMPARE(module.visibility(other), QStringLiteral("shown"));
    QCOMPARE(module.nameOfChannel(channel), QStringLiteral("Strain Gauge"));
    // Neither time nor live values nor another module's status bring it back.
    module.time.advance(60000);
    module.reportFast();
    module.take(status(9, 4));
    QCOMPARE(module.visibility(channel), QStringLiteral("hidden"));
    // The device tells what it has, and that is shown: here it did not change.
    module.reportStatic();
    QCOMPARE(module.visibility(channel), QStringLiteral("shown"));
    QCOMPARE(module.nameOfChannel(channel), QStringLiteral("Voltage"));
}

void TstModuleDeviceType4Functions::cancelSendsNothing()
{
    UniversalModule module(2, 3);
    module.clickChannel(Channel::A);
    module.choose("strainGBtn");
    QTest::mouseClick(module.inDialog("CancelBtn"), Qt::LeftButton);
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.visibility(Channel::A), QStringLiteral("shown"));
    // The next one begins with what the channel has.
    module.clickChannel(Channel::A);
    QVERIFY(module.inDialog("voltageBtn")->isChecked());
}

void TstModuleDeviceType4Functions::shiftOkSendsTheGroupCommandAndNoModuleSelected()
{
    UniversalModule module(2, 3);
    module.clickChannel(Channel::A);
    module.choose("potBtn");
    module.pressOk(Qt::ShiftModifier);
    QCOMPARE(module.takeSent(), QStringList("group type 9 command 4 value 6"));
    QVERIFY(module.openDialogs().isEmpty());
    // The module itself changes with all others, by the group command.
    QCOMPARE(module.visibility(Channel::A), QStringLiteral("shown"));
    QCOMPARE(module.nameOfChannel(Channel::A), QStringLiteral("Voltage"));
}

void TstModuleDeviceType4Functions::otherKeysOnOkChangeTheChannelAlone()
{
    for (const int keys : {int(Qt::ControlModifier), int(Qt::AltModifier),
                           int(Qt::ShiftModifier) + int(Qt::ControlModifier)}) {
        UniversalModule module(2, 3);
        module.clickChannel(Channel::B);
        module.choose("voltageBtn");
        module.pressOk(Qt::KeyboardModifiers(QFlag(keys)));
        QCOMPARE(module.takeSent(), (QStringList{"change channel 6 to 2", "get 3"}));
    }
}

void TstModuleDeviceType4Functions::oddChannelNumberMeansA_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Channel>("channel");
    QTest::addColumn<QString>("sent");
    QTest::newRow("first module, A") << 1 << Channel::A << "change channel 1 to 1";
    QTest::newRow("first module, B") << 1 << Channel::B << "change channel 2 to 1";
    QTest::newRow("module 77, A") << 77 << Channel::A << "change channel 153 to 1";
    QTest::newRow("module 77, B") << 77 << Channel::B << "change channel 154 to 1";
    QTest::newRow("last module, A") << 128 << Channel::A << "change channel 255 to 1";
    QTest::newRow("last module, B: 256 in one byte") << 128 << Channel::B << "change channel 0 to 1";
}

void TstModuleDeviceType4Functions::oddChannelNumberMeansA()
{
    QFETCH(int, number);
    QFETCH(Channel, channel);
    QFETCH(QString, sent);
    FamilyModule module(9, number);
    module.device.functionCodeA = module.device.functionCodeB = 2;
    module.begin();
    QTest::mouseClick(
        childByName<QPushButton>(&module.row(), channel == Channel::A ? "pushButton_ChA" : "pushButton_ChB"),
        Qt::LeftButton);
    QCOMPARE(module.openDialogs().size(), 1);
    QDialog *dialog = module.openDialogs().first();
    clickRadio(dialog, "strainGBtn");
    QTest::mouseClick(childByName<QPushButton>(dialog, "OkBtn"), Qt::LeftButton);
    QCOMPARE(module.takeSent(), (QStringList{sent, QStringLiteral("get %1").arg(number)}));
    QCOMPARE(module.names(), channel == Channel::A ? QStringLiteral("Analog|Strain Gauge|Voltage")
                                                   : QStringLiteral("Analog|Voltage|Strain Gauge"));
}

void TstModuleDeviceType4Functions::supplyControlsCannotBeReached()
{
    UniversalModule module(2, 3);
    module.clickChannel(Channel::A);
    for (const char *button : {"strainGBtn", "potBtn", "voltageBtn", "iepeBtn"}) {
        module.choose(button);
        QVERIFY(!childByName<QWidget>(module.dialog(), "VoltValEditBox")->isEnabled());
        QVERIFY(!module.inDialog("supplyVoltCheckBx")->isEnabled());
        QVERIFY(!module.inDialog("supplyVoltCheckBx")->isChecked());
    }
    for (const char *name : {"supplyVoltCheckBx", "Preset5V", "Preset12V"})
        QTest::mouseClick(module.inDialog(name), Qt::LeftButton);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType4Functions::statusUnderTheDialogSendsNothing()
{
    UniversalModule module(2, 3);
    module.clickChannel(Channel::A);
    module.choose("potBtn");
    module.device.functionCodeA = 1;
    module.begin();
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    QVERIFY(module.inDialog("potBtn")->isChecked());
    module.pressOk();
    QCOMPARE(module.takeSent(), (QStringList{"change channel 5 to 6", "get 3"}));
}

void TstModuleDeviceType4Functions::dialogGoesWithTheController()
{
    UniversalModule module(2, 3);
    module.clickChannel(Channel::B);
    const QPointer<QDialog> dialog(module.dialog());
    QVERIFY(dialog);
    module.controller.reset();
    QVERIFY(!dialog);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType4Functions::okAfterTheRowWasRetiredSendsNothing_data()
{
    QTest::addColumn<int>("keys");
    QTest::newRow("Ok") << int(Qt::NoModifier);
    QTest::newRow("Ok with Shift") << int(Qt::ShiftModifier);
}

void TstModuleDeviceType4Functions::okAfterTheRowWasRetiredSendsNothing()
{
    QFETCH(int, keys);
    UniversalModule module(2, 3);
    module.clickChannel(Channel::A);
    module.choose("strainGBtn");
    module.controller->retire();
    if (module.dialog())
        module.pressOk(Qt::KeyboardModifiers(QFlag(keys)));
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType4Functions::functionChangeAtARetiredRowSendsNothing()
{
    UniversalModule module(2, 3);
    module.controller->retire();
    GroupCommand command;
    command.moduleType = 9;
    command.command = 4;
    command.value = 1;
    module.controller->Slot_FilterOrRangeHandle(command);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType4Functions::unknownModuleHasNoDialog()
{
    FamilyModule module(77);
    module.controller->showAsUnknownModule();
    for (const char *name : {"pushButton_ChA", "pushButton_ChB"})
        QVERIFY(!childByName<QPushButton>(&module.row(), name)->isVisible());
    module.device.moduleType = 9;
    module.begin();
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.takeSent(), QStringList());
}

QTEST_MAIN(TstModuleDeviceType4Functions)
#include "tst_moduledevicetype4_functions.moc"
