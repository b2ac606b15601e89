#include "portlisterfixture.h"
#include "settings/comconfigbox.h"
#include "support/messagecatcher.h"

#include <QLabel>
#include <QTimer>
#include <QtTest>

/// The ports of the machine in the dialog.
class TstPortListerSurvey : public PortListerFixture
{
    Q_OBJECT

private slots:
    void surveyComesEveryTwoAndAHalfSeconds();
    void surveyRunsWhileTheDialogIsHidden();
    void surveyRunsBesideAModalRun();
    void surveyRunsBesideTheBox();
    void unpluggedPortDisappears();
    void portBeyondTheTableIsLoggedAtEachSurvey();
    void colourOfThePortsStays();
};

void TstPortListerSurvey::surveyComesEveryTwoAndAHalfSeconds()
{
    QVERIFY(m_ports->plug(QStringLiteral("COM7")));
    m_time->advance(2499);
    QCOMPARE(number(7), QStringLiteral("__"));
    m_time->advance(1);
    QCOMPARE(number(7), QStringLiteral("7"));
    QVERIFY(m_ports->plug(QStringLiteral("COM150")));
    m_time->advance(2499);
    QCOMPARE(number(150), QStringLiteral("__"));
    m_time->advance(1);
    QCOMPARE(number(150), QStringLiteral("150"));
    QCOMPARE(number(7), QStringLiteral("7"));
    QVERIFY(m_ports->unplug(QStringLiteral("COM7")));
    QVERIFY(m_ports->unplug(QStringLiteral("COM150")));
}

void TstPortListerSurvey::surveyRunsWhileTheDialogIsHidden()
{
    show();
    m_lister->hide();
    QVERIFY(m_ports->plug(QStringLiteral("COM26")));
    m_time->advance(2500);
    QCOMPARE(number(26), QStringLiteral("26"));
    QVERIFY(m_ports->unplug(QStringLiteral("COM26")));
}

void TstPortListerSurvey::surveyRunsBesideAModalRun()
{
    QVERIFY(m_ports->plug(QStringLiteral("COM31")));
    m_lister->setModal(true);
    bool isModal = false;
    QString shown;
    QTimer::singleShot(0, m_lister.get(), [&] {
        isModal = m_lister->isVisible() && QApplication::activeModalWidget() == m_lister.get();
        m_time->advance(2500);
        shown = number(31);
        m_lister->hide();
    });
    m_lister->exec();
    QVERIFY(isModal);
    QCOMPARE(shown, QStringLiteral("31"));
}

void TstPortListerSurvey::surveyRunsBesideTheBox()
{
    QVERIFY(m_ports->plug(QStringLiteral("COM32")));
    QString shown;
    whenBoxRuns([&](ComConfigBox &box) {
        m_time->advance(2500);
        shown = number(32);
        box.hide();
    });
    m_lister->portConfig();
    QCOMPARE(shown, QStringLiteral("32"));
}

void TstPortListerSurvey::unpluggedPortDisappears()
{
    QVERIFY(m_ports->plug(QStringLiteral("COM3")));
    m_lister->Slot_AvailblePorts();
    QCOMPARE(number(3), QStringLiteral("3"));
    QVERIFY(m_ports->unplug(QStringLiteral("COM3")));
    m_lister->Slot_AvailblePorts();
    QCOMPARE(number(3), QStringLiteral("__"));
}

void TstPortListerSurvey::portBeyondTheTableIsLoggedAtEachSurvey()
{
    QVERIFY(m_ports->plug(QStringLiteral("COM151")));
    MessageCatcher log;
    m_time->advance(2500);
    QCOMPARE(log.lines(), QStringList{QStringLiteral("Ports more than 150")});
    m_time->advance(2500);
    QCOMPARE(log.lines().size(), 2);
    QVERIFY(m_ports->unplug(QStringLiteral("COM151")));
    m_time->advance(2500);
    QCOMPARE(log.lines().size(), 2);
}

void TstPortListerSurvey::colourOfThePortsStays()
{
    const auto *label = child<QLabel>("portNumber3");
    const QPalette before = label->palette();
    QVERIFY(m_ports->plug(QStringLiteral("COM3")));
    m_lister->Slot_AvailblePorts();
    QCOMPARE(label->palette(), before);
    QCOMPARE(label->styleSheet(), QString());
    QVERIFY(m_ports->unplug(QStringLiteral("COM3")));
}

QTEST_MAIN(TstPortListerSurvey)
#include "tst_portlistersurvey.moc"
