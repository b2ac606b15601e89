#include "modules/common/channelstyles.h"

#include <QtTest>

/// The style sheets of the channels' controls, to the letter.
class TstChannelStyles : public QObject
{
    Q_OBJECT

private slots:
    void literals_data();
    void literals();
};

void TstChannelStyles::literals_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("literal");
    QTest::newRow("sent") << channelstyles::sent() << "color:#C00000";
    QTest::newRow("confirmed") << channelstyles::confirmed() << "color:black";
    QTest::newRow("offset sent") << channelstyles::offsetSent()
                                 << "border-image: url(:/pictures/editline.png);\ncolor:#C00000;";
    QTest::newRow("offset confirmed")
        << channelstyles::offsetConfirmed() << "border-image: url(:/pictures/editline.png);\ncolor:black;";
    QTest::newRow("offset of the module")
        << channelstyles::offsetAuto()
        << "border-image: url(:/pictures/editline.png);\ncolor: rgb(235, 220, 0);";
    QTest::newRow("switched on")
        << channelstyles::switchedOn()
        << "QPushButton {border-image: url(:/pictures/checkbox_blue.png);}QToolTip {}";
    QTest::newRow("on") << channelstyles::on()
                        << "QPushButton {border-image: url(:/pictures/checkbox_black.png);}QToolTip {}";
    QTest::newRow("off") << channelstyles::off()
                         << "QPushButton {border-image: url(:/pictures/checkbox_unchecked.png);}QToolTip {}";
    QTest::newRow("shunt active")
        << channelstyles::shuntActive()
        << "QPushButton {border-image: url(:/pictures/shunt_aux_fake.bmp);}QToolTip {}";
}

void TstChannelStyles::literals()
{
    QFETCH(QString, style);
    QTEST(style, "literal");
}

QTEST_APPLESS_MAIN(TstChannelStyles)
#include "tst_channelstyles.moc"
