#include "bridgetests.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>

namespace {

/// The dialog of the offset button; it must be open, alone.
QDialog *openOffsetDialog(FamilyModule &module, Channel channel)
{
    QTest::mouseClick(module.button(channel, "pushButton_ManualOffset"), Qt::LeftButton);
    const auto open = module.openDialogs();
    return open.size() == 1 ? open.first() : nullptr;
}

void clickOf(QDialog *dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(childByName<QDialogButtonBox>(dialog, "buttonBox")->button(button), Qt::LeftButton);
}

QString preselection(const FamilyModule &module)
{
    QString text;
    for (const Channel channel : kBothChannels) {
        for (const char *name : {"checkBox_Shunt_Pos_Presel", "checkBox_Shunt_Neg_Presel"}) {
            const QPushButton *button = module.button(channel, name);
            const QLatin1String picture(button->isChecked() ? "checkbox_black.png"
                                                            : "checkbox_unchecked.png");
            if (button->styleSheet() !=
                QStringLiteral("QPushButton {border-image: url(:/pictures/%1);}QToolTip {}").arg(picture))
                return QStringLiteral("picture of %1: %2").arg(QLatin1String(name), button->styleSheet());
            text += button->isChecked() ? '1' : '0';
        }
    }
    return text;
}

} // namespace

void BridgeTests::preselectBits_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none") << 0 << "0000";
    QTest::newRow("bit 0: positive of A") << 1 << "1000";
    QTest::newRow("bit 1: negative of A") << 2 << "0100";
    QTest::newRow("bit 2: positive of B") << 4 << "0010";
    QTest::newRow("bit 3: negative of B") << 8 << "0001";
    QTest::newRow("mixed") << 9 << "1001";
    QTest::newRow("all") << 15 << "1111";
    QTest::newRow("other bits mean nothing") << 0xF0 << "0000";
}

void BridgeTests::preselectBits()
{
    QFETCH(int, bits);
    FamilyModule module(typeCode());
    module.device.shuntPreselect = static_cast<quint8>(~bits);
    module.reportStatic();
    module.device.shuntPreselect = static_cast<quint8>(bits);
    module.reportStatic();
    QTEST(preselection(module), "shown");
}

void BridgeTests::preselectionIsAppliedWithoutSending()
{
    FamilyModule module(typeCode());
    module.begin();
    for (int bits = 0; bits < 16; ++bits) {
        module.device.shuntPreselect = static_cast<quint8>(bits);
        module.reportStatic();
    }
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void BridgeTests::shuntOfTheFastStatusHasNoDisplay()
{
    FamilyModule module(typeCode());
    module.begin();
    const QStringList before = module.shownAll();
    module.set(ChannelParameter::Shunt, Channel::A, 1);
    module.report(ChannelParameter::Shunt, Channel::B, 1);
    QCOMPARE(module.shownAll(), before);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(1).shuntState), 1);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(2).shuntState), 1);
    // Compared with 1.
    module.report(ChannelParameter::Shunt, Channel::B, 2);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(2).shuntState), 0);
    QCOMPARE(module.takeSent(), QStringList());
}

void BridgeTests::shuntGesturesSendTheirCodes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("keys");
    QTest::addColumn<int>("codeOn");
    QTest::addColumn<int>("codeOff");
    const QByteArray positive("checkBox_Shunt_Pos");
    const QByteArray negative("checkBox_Shunt_Neg");
    QTest::newRow("positive") << positive << 0 << 131 << 130;
    QTest::newRow("negative") << negative << 0 << 137 << 136;
    QTest::newRow("positive, Shift") << positive << int(Qt::ShiftModifier) << 139 << 138;
    QTest::newRow("negative, Shift") << negative << int(Qt::ShiftModifier) << 141 << 140;
    QTest::newRow("positive preselect") << positive + "_Presel" << 0 << 155 << 154;
    QTest::newRow("negative preselect") << negative + "_Presel" << 0 << 157 << 156;
    QTest::newRow("preselect knows no Shift") << positive + "_Presel" << int(Qt::ShiftModifier) << 155 << 154;
    QTest::newRow("positive, Alt: nothing is sent") << positive << int(Qt::AltModifier) << 0 << 0;
    QTest::newRow("negative, Alt: nothing is sent") << negative << int(Qt::AltModifier) << 0 << 0;
}

void BridgeTests::shuntGesturesSendTheirCodes()
{
    QFETCH(QByteArray, name);
    QFETCH(int, keys);
    QFETCH(int, codeOn);
    QFETCH(int, codeOff);
    for (const Channel channel : kBothChannels) {
        FamilyModule module(typeCode());
        module.begin();
        QPushButton *button = module.button(channel, name.constData());
        for (const int code : {codeOn, codeOff}) {
            const bool wasChecked = button->isChecked();
            QTest::mouseClick(button, Qt::LeftButton, Qt::KeyboardModifiers(QFlag(keys)));
            QCOMPARE(button->isChecked(), !wasChecked);
            QStringList expected;
            if (code != 0) {
                expected << QStringLiteral(
                                "T1 m3 c%1: type 0, range 0, zero 0, offset Auto, filter 1000, inverted 0, "
                                "shunt %2, level 0, lists 0+0, selector 7")
                                .arg(static_cast<int>(channel))
                                .arg(code);
            }
            QCOMPARE(module.takeSent().filter(QStringLiteral("T1")), expected);
        }
    }
}

void BridgeTests::shuntsOfOneModuleRunIndependently()
{
    FamilyModule module(typeCode());
    module.begin();
    const auto all = [&module] {
        return module.shown(ChannelParameter::Shunt, Channel::A) + " | " +
               module.shown(ChannelParameter::Shunt, Channel::B);
    };
    QTest::mouseClick(module.button(Channel::A, "checkBox_Shunt_Pos"), Qt::LeftButton);
    module.time.advance(5000);
    QTest::mouseClick(module.button(Channel::A, "checkBox_Shunt_Neg"), Qt::LeftButton);
    module.time.advance(5000);
    QTest::mouseClick(module.button(Channel::B, "checkBox_Shunt_Pos"), Qt::LeftButton);
    module.time.advance(2000);
    module.takeSent();
    module.time.advance(7999);
    QVERIFY2(all().startsWith(QLatin1String("+on active -on active | +on active -off ")), qPrintable(all()));
    module.time.advance(1);
    QVERIFY2(all().startsWith(QLatin1String("+off unchecked -on active | +on active -off ")),
             qPrintable(all()));
    module.time.advance(5000);
    QVERIFY2(all().startsWith(QLatin1String("+off unchecked -off unchecked | +on active -off ")),
             qPrintable(all()));
    module.time.advance(5000);
    QVERIFY2(all().startsWith(QLatin1String("+off unchecked -off unchecked | +off unchecked -off ")),
             qPrintable(all()));
    QCOMPARE(module.takeSent(), QStringList());
}

void BridgeTests::offsetOfTheStatusIsShown_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("style");
    const QString picture = QStringLiteral("border-image: url(:/pictures/editline.png);\n");
    QTest::newRow("Auto") << "Auto" << picture + "color: rgb(235, 220, 0);";
    QTest::newRow("number") << "-12.5" << picture + "color:black;";
    QTest::newRow("auto in small letters is a text like any other") << "auto" << picture + "color:black;";
    QTest::newRow("empty") << "" << picture + "color:black;";
    QTest::newRow("no number") << QString::fromUtf8("±ü") << picture + "color:black;";
}

void BridgeTests::offsetOfTheStatusIsShown()
{
    QFETCH(QString, text);
    FamilyModule module(typeCode());
    module.begin();
    module.device.offsetB = text;
    module.reportStatic();
    const QPushButton *offset = module.button(Channel::B, "pushButton_ManualOffset");
    QCOMPARE(offset->text(), text);
    QTEST(offset->styleSheet(), "style");
    QCOMPARE(module.controller->GetData()->channel(2).manualOffset, text);
    QCOMPARE(module.button(Channel::A, "pushButton_ManualOffset")->text(), QStringLiteral("Auto"));
}

void BridgeTests::offsetDialogStartsWithTheOffsetOfTheStatus()
{
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    QDialog *dialog = openOffsetDialog(module, Channel::A);
    QVERIFY(dialog);
    QVERIFY(childByName<QRadioButton>(dialog, "radioButton_OptionManual")->isChecked());
    QCOMPARE(dialog->findChild<QLineEdit *>()->text(), QStringLiteral("1.5"));
    clickOf(dialog, QDialogButtonBox::Cancel);
    module.time.turn();
    dialog = openOffsetDialog(module, Channel::B);
    QVERIFY(dialog);
    QVERIFY(childByName<QRadioButton>(dialog, "radioButton_OptionAuto")->isChecked());
}

void BridgeTests::rejectedOffsetSendsNothing()
{
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    QDialog *dialog = openOffsetDialog(module, Channel::A);
    QVERIFY(dialog);
    clickRadio(dialog, "radioButton_OptionAuto");
    clickOf(dialog, QDialogButtonBox::Cancel);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.shown(ChannelParameter::ManualOffset, Channel::A), QStringLiteral("1.5 black"));
}

void BridgeTests::statusUnderTheOffsetDialogSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    QDialog *dialog = openOffsetDialog(module, Channel::A);
    QVERIFY(dialog);
    clickRadio(dialog, "radioButton_OptionManual");
    auto *edit = dialog->findChild<QLineEdit *>();
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("-2.25"));
    module.report(ChannelParameter::ManualOffset, Channel::A, 1);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.shown(ChannelParameter::ManualOffset, Channel::A), QStringLiteral("1.5 black"));
    QCOMPARE(edit->text(), QStringLiteral("-2.25"));
    clickOf(dialog, QDialogButtonBox::Ok);
    QCOMPARE(
        module.takeSent(),
        QStringList(
            "T1 m3 c1: type 0, range 0, zero 0, offset -2.25, filter 1000, inverted 0, shunt 0, level 0, "
            "lists 0+0, selector 3"));
}

void BridgeTests::openOffsetDialogGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.begin();
    const QPointer<QDialog> dialog(openOffsetDialog(module, Channel::A));
    QVERIFY(dialog);
    module.controller.reset();
    QVERIFY(!dialog);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void BridgeTests::offsetAcceptedAfterTheRowWasRetiredSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    QDialog *dialog = openOffsetDialog(module, Channel::A);
    QVERIFY(dialog);
    clickRadio(dialog, "radioButton_OptionManual");
    module.controller->retire();
    clickOf(dialog, QDialogButtonBox::Ok);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void BridgeTests::runningShuntGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.begin();
    QTest::mouseClick(module.button(Channel::A, "checkBox_Shunt_Neg"), Qt::LeftButton);
    module.time.advance(10000);
    module.takeSent();
    module.controller.reset();
    module.time.advance(20000);
    QCOMPARE(module.takeSent(), QStringList());
}
