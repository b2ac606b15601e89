#include "amplifiertests.h"

#include <QMessageBox>
#include <QPointer>

void AmplifierTests::polarityBits_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::newRow("none") << 0 << "off unchecked"
                          << "off unchecked";
    QTest::newRow("bit 0 is A") << 1 << "on black"
                                << "off unchecked";
    QTest::newRow("bit 1 is B") << 2 << "off unchecked"
                                << "on black";
    QTest::newRow("both") << 3 << "on black"
                          << "on black";
    QTest::newRow("other bits mean nothing") << 0xFC << "off unchecked"
                                             << "off unchecked";
}

void AmplifierTests::polarityBits()
{
    QFETCH(int, bits);
    FamilyModule module(typeCode());
    module.device.revPolBits = static_cast<quint8>(~bits);
    module.reportStatic();
    module.device.revPolBits = static_cast<quint8>(bits);
    module.reportStatic();
    QTEST(module.shown(ChannelParameter::ReversePolarity, Channel::A), "a");
    QTEST(module.shown(ChannelParameter::ReversePolarity, Channel::B), "b");
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(1).reversePolarity), bits & 1);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(2).reversePolarity), (bits & 2) >> 1);
    QCOMPARE(module.takeSent(), QStringList());
}

void AmplifierTests::fastStatusColoursTheAutozeroButton_data()
{
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none") << 0 << 0 << "black black";
    QTest::newRow("A") << 1 << 0 << "red black";
    QTest::newRow("B") << 0 << 1 << "black red";
    QTest::newRow("both") << 1 << 1 << "red red";
    QTest::newRow("another value is not running") << 2 << 255 << "black black";
}

void AmplifierTests::fastStatusColoursTheAutozeroButton()
{
    QFETCH(int, a);
    QFETCH(int, b);
    FamilyModule module(typeCode());
    module.reportStatic();
    module.report(ChannelParameter::Autozero, Channel::A, a == 1 ? 0 : 1);
    module.set(ChannelParameter::Autozero, Channel::A, a);
    module.report(ChannelParameter::Autozero, Channel::B, b);
    QTEST(module.shown(ChannelParameter::Autozero, Channel::A) + ' ' +
              module.shown(ChannelParameter::Autozero, Channel::B),
          "shown");
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(1).autozero), a == 1 ? 1 : 0);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(2).autozero), b == 1 ? 1 : 0);
    QCOMPARE(module.takeSent(), QStringList());
}

void AmplifierTests::oddFastVariantEndsTheAutozero()
{
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    QCOMPARE(module.shown(ChannelParameter::Autozero, Channel::A), QStringLiteral("red"));
    module.controller->Slot_FastModuleStatus(QVariant());
    QCOMPARE(module.shown(ChannelParameter::Autozero, Channel::A), QStringLiteral("black"));
}

void AmplifierTests::statusWhileAutozeroIsHeldSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    QPushButton *autozero = module.autozeroButton(Channel::A);
    QTest::mousePress(autozero, Qt::LeftButton);
    module.time.advance(500);
    module.begin();
    QCOMPARE(module.takeSent(), QStringList());
    module.time.advance(500);
    QTest::mouseRelease(autozero, Qt::LeftButton);
    const QStringList sent = module.takeSent();
    QCOMPARE(sent.size(), 1);
    QVERIFY2(sent.first().endsWith(QLatin1String("selector 5")), qPrintable(sent.first()));
}

void AmplifierTests::statusWhileTheFilterIsTypedSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    module.row().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&module.row()));
    module.typeFilter(Channel::A, QStringLiteral("77"));
    module.report(ChannelParameter::Filter, Channel::A, 2);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.shown(ChannelParameter::Filter, Channel::A), QStringLiteral("1300 black"));
}

void AmplifierTests::returnInTheFilterBoxActsOnANewRow()
{
    FamilyModule module(typeCode());
    module.change(ChannelParameter::Filter, Channel::B, 1);
    const QStringList sent = module.takeSent();
    QCOMPARE(sent.size(), 1);
    QVERIFY2(sent.first().contains(QLatin1String(" m3 c2: type 0, range 0, ")), qPrintable(sent.first()));
    QVERIFY2(sent.first().contains(QLatin1String(", filter 1200, ")), qPrintable(sent.first()));
}

void AmplifierTests::longPressActsOnANewRow()
{
    FamilyModule module(typeCode());
    module.change(ChannelParameter::Autozero, Channel::B, 2);
    const QStringList sent = module.takeSent();
    QCOMPARE(sent.size(), 1);
    QVERIFY2(sent.first().contains(QLatin1String(" m3 c2: ")), qPrintable(sent.first()));
    QVERIFY2(sent.first().endsWith(QLatin1String("selector 8")), qPrintable(sent.first()));
}

void AmplifierTests::filterLeftAfterTheRowWasRetiredSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    module.row().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&module.row()));
    module.typeFilter(Channel::A, QStringLiteral("77"));
    QVERIFY(module.filterBox(Channel::A)->hasFocus());
    module.controller->retire();
    module.autozeroButton(Channel::B)->setFocus();
    QVERIFY(!module.filterBox(Channel::A)->hasFocus());
    QCOMPARE(module.takeSent(), QStringList());
    QVERIFY(module.openDialogs().isEmpty());
    // Losing the focus because the row goes is no wish either.
    module.typeFilter(Channel::A, QStringLiteral("88"));
    module.controller.reset();
    QCOMPARE(module.takeSent(), QStringList());
}

void AmplifierTests::filterInFocusGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.begin();
    module.row().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&module.row()));
    module.typeFilter(Channel::B, QStringLiteral("77"));
    QVERIFY(module.filterBox(Channel::B)->hasFocus());
    // Its row loses the focus on the way, which is no wish of the operator.
    module.controller.reset();
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void AmplifierTests::filterWarningGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.device.filterA = QStringLiteral("250");
    module.begin();
    clickArrow(module.filterBox(Channel::A), false);
    module.time.advance(1200);
    QCOMPARE(module.takeSent().size(), 1);
    QCOMPARE(module.openDialogs().size(), 1);
    const QPointer<QDialog> warning(module.openDialogs().first());
    QVERIFY(qobject_cast<QMessageBox *>(warning));
    module.controller.reset();
    QVERIFY(!warning);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void AmplifierTests::heldAutozeroGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.begin();
    QTest::mousePress(module.autozeroButton(Channel::A), Qt::LeftButton);
    module.time.advance(1500);
    module.controller.reset();
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}
