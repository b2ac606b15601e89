#include "controller/modulecontroller_ctrllr.h"
#include "modules/analogmodule_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "protocol/records/systemstatus.h"
#include "support/appfixture.h"
#include "support/messagecatcher.h"

#include <QDebug>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QtTest>

namespace {

/// A settings file with a port and no mode: the application starts without opening a link.
const QByteArray kQuietSettings = "PORT1=COM5:115200,E,8,1\r\n";

System_Status fullStatus(const std::vector<int> &types, bool withPower = true)
{
    System_Status status = systemStatus(types, true, withPower);
    status.bitRate = QStringLiteral("2500 (16ch)");
    status.samplingRate = QStringLiteral("3000");
    status.poweringMode = QStringLiteral("cable");
    status.dataTransmission = QStringLiteral("inductive");
    return status;
}

const QStringList kTextsInOrder = {
    QStringLiteral("new text of lineEdit_BitRate"), QStringLiteral("new text of lineEdit_SamplingRate"),
    QStringLiteral("new text of label_PoweringMode"), QStringLiteral("new text of label_DataTransmission")};

/// The layout of a box around one label. A label has no signal for a new text, but asks for a new layout
/// at once; this one tells the log of it.
class TellingLayout : public QVBoxLayout
{
public:
    explicit TellingLayout(QLabel *label)
        : QVBoxLayout(new QWidget(label->parentWidget()))
        , m_name(label->objectName())
    {
        label->setMinimumSize(0, 0); // one of fixed size asks for nothing
        addWidget(label);
        parentWidget()->show();
        m_isWatching = true;
    }

    void invalidate() override
    {
        if (m_isWatching)
            qDebug().noquote() << "new text of" << m_name;
        QVBoxLayout::invalidate();
    }

private:
    const QString m_name;
    bool m_isWatching = false;
};

/// Those lines of the log that are one of `steps`, as one text. One that stands there several times in
/// succession counts once: a label asks for a new layout more often than it has to.
QString stepsOf(const QStringList &log, const QStringList &steps)
{
    QStringList found;
    for (const QString &line : log) {
        if (steps.contains(line) && (found.isEmpty() || found.last() != line))
            found.append(line);
    }
    return found.join(QLatin1Char('\n'));
}

} // namespace

/// In which order the effects of a system status, a clean slate, a report of the rates and the opening of a
/// link come. Everything that can be noticed is written to the log, between the lines of the application.
class TstEffectOrder : public QObject
{
    Q_OBJECT

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void systemStatusFillsThePanelBeforeItMakesRows_data();
    void systemStatusFillsThePanelBeforeItMakesRows();
    void cleanSlateTellsEmptiesRemovesAndDisables();
    void cleanSlateWithoutControllerKeepsTheOrder();
    void rateReportShowsTheBitRateFirst();
    void linkThatFailsIsToldBeforeTheLampChanges();

private:
    void report(const System_Status &status)
    {
        m_fixture->app->Slot_SystemStatus(QVariant::fromValue(status));
    }
    void watchSignals();
    void watchTexts();
    void watchRows();

    std::unique_ptr<AppFixture> m_fixture;
};

void TstEffectOrder::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings(kQuietSettings);
    m_fixture->start();
    watchSignals();
    watchTexts();
}

void TstEffectOrder::watchSignals()
{
    m_fixture->child<QLineEdit>("connectionLamp")->installEventFilter(this);
    auto *app = m_fixture->app.get();
    connect(app, &Framework_Ctrllr::Signal_EnableSamplingRate, this,
            [] { qDebug().noquote() << "rates enabled"; });
    connect(app, &Framework_Ctrllr::Signal_DisableSamplingRate, this,
            [] { qDebug().noquote() << "rates disabled"; });
    connect(m_fixture->window(), &Framework_View::Signal_DebugMessage, this,
            [](const QString &text) { qDebug().noquote() << "funnel:" << text; });
}

void TstEffectOrder::watchTexts()
{
    for (const char *name : {"statusLabel", "label_ModulesNumber", "label_ChannelsNumber",
                             "label_PoweringMode", "label_DataTransmission"})
        new TellingLayout(m_fixture->child<QLabel>(name)); // belongs to its box
    for (const char *name : {"lineEdit_BitRate", "lineEdit_SamplingRate"})
        connect(m_fixture->child<QLineEdit>(name), &QLineEdit::textChanged, this,
                [name] { qDebug().noquote() << "new text of" << name; });
}

void TstEffectOrder::watchRows()
{
    int number = 0;
    for (ModuleDevice_Ctrllr *row : m_fixture->app->analogModules()) {
        ++number;
        connect(row, &QObject::destroyed, this,
                [number] { qDebug().noquote() << "row" << number << "gone"; });
    }
    connect(m_fixture->app->controllerModule(), &QObject::destroyed, this,
            [] { qDebug().noquote() << "top row gone"; });
}

bool TstEffectOrder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        qDebug().noquote() << "lamp changed";
    return QObject::eventFilter(watched, event);
}

void TstEffectOrder::systemStatusFillsThePanelBeforeItMakesRows_data()
{
    QTest::addColumn<bool>("power");
    QTest::addColumn<QStringList>("decision");

    // The line of a chain without a power module comes behind what it tells of.
    QTest::newRow("with power") << true
                                << QStringList{"Controller and Power Module request received -> creating",
                                               "<<New Controller has been attached>>", "lamp changed"};
    QTest::newRow("without power")
        << false
        << QStringList{"<<New Controller has been attached>>", "lamp changed",
                       "Warning: Controller Modul request received, but without Power Modul!!!"};
}

void TstEffectOrder::systemStatusFillsThePanelBeforeItMakesRows()
{
    QFETCH(bool, power);
    QFETCH(QStringList, decision);
    QStringList steps = {"void Framework_Ctrllr::Slot_SystemStatus(QVariant) : retrieved system status",
                         "rates enabled", "new text of label_ModulesNumber",
                         "new text of label_ChannelsNumber"};
    steps += kTextsInOrder;
    steps += "sizeof(systemStatus.sModules):  10";
    steps += decision;
    steps += {"Checking analog moduls.",
              "funnel: System Status Message:",
              "funnel: Index 1 Module Type: 1",
              "Index  0 Module : 1",
              "<<New module attached at 0>>",
              "funnel: Index 2 Module Type: 4",
              "Index  1 Module : 4",
              "<<New module attached at 1>>",
              "funnel: Static Module Status Message:\n"};
    MessageCatcher messages;
    report(fullStatus({1, 4}, power));
    QCOMPARE(stepsOf(messages.lines(), steps), steps.join(QLatin1Char('\n')));
}

void TstEffectOrder::cleanSlateTellsEmptiesRemovesAndDisables()
{
    report(fullStatus({1, 4, 9}));
    watchRows();
    QStringList steps = {"new text of statusLabel"};
    steps += kTextsInOrder;
    // What is attached here are the placeholders.
    steps += {"row 3 gone",
              "row 2 gone",
              "row 1 gone",
              "<<New module attached at 0>>",
              "top row gone",
              "<<New Controller has been attached>>",
              "<<Controller Removed>>",
              "rates disabled",
              "lamp changed"};
    MessageCatcher messages;
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(stepsOf(messages.lines(), steps), steps.join(QLatin1Char('\n')));
}

void TstEffectOrder::cleanSlateWithoutControllerKeepsTheOrder()
{
    System_Status status = fullStatus({});
    status.sModules = {};
    report(status);
    QStringList steps = {"new text of statusLabel"};
    steps += kTextsInOrder;
    steps += {"rates disabled", "lamp changed"};
    MessageCatcher messages;
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(stepsOf(messages.lines(), steps), steps.join(QLatin1Char('\n')));
}

void TstEffectOrder::rateReportShowsTheBitRateFirst()
{
    System_Status status;
    status.bitRate = QStringLiteral("625 (32ch)");
    status.samplingRate = QStringLiteral("375");
    const QStringList steps = {
        "***********System status received Bitrate: \"625 (32ch)\" Sampling Rate: \"375\"",
        kTextsInOrder.at(0), kTextsInOrder.at(1)};
    MessageCatcher messages;
    m_fixture->app->Slot_UpdateSamplingNBitRate(QVariant::fromValue(status));
    QCOMPARE(stepsOf(messages.lines(), steps), steps.join(QLatin1Char('\n')));
}

void TstEffectOrder::linkThatFailsIsToldBeforeTheLampChanges()
{
    report(fullStatus({1}));
    const QStringList steps = {"new text of statusLabel", "rates disabled", "lamp changed"};
    MessageCatcher messages;
    QVERIFY(!m_fixture->app->openLink());
    QCOMPARE(stepsOf(messages.lines(), steps), steps.join(QLatin1Char('\n')));
}

QTEST_MAIN(TstEffectOrder)

#include "tst_effectorder.moc"
