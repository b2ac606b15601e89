// What the rows of a full chain cost while it is at work: a fast status that changes every value, a static
// status that only one of the rows takes, and a gesture that reaches all channels. All of it goes the way of
// the program, from the session's signals to the controls; times are those until the signal returns, without
// the painting that follows.

#include "barerows.h"
#include "benchapplication.h"
#include "giveup.h"
#include "measuring.h"
#include "modules/common/channelstyles.h"
#include "modules/common/displayformat.h"
#include "modules/common/livevalues.h"
#include "modules/moduledevice_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "number.h"
#include "protocol/communication.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"
#include "widgetbench.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTimer>
#include <algorithm>

namespace {

constexpr int kModules = 128;
constexpr int kRounds = 500;
constexpr int kGestureRounds = 7;
constexpr double kFastLimitMs = 5;
constexpr double kStaticLimitMs = 2;
constexpr double kGapLimitMs = 30;
constexpr std::chrono::milliseconds kPendingIsOver{1100};

QVector<quint8> typesInTurn()
{
    QVector<quint8> types;
    for (int i = 0; i < kModules; ++i)
        types.append(static_cast<quint8>(1 + i % 9));
    return types;
}

/// Differs from that of the round before in every value.
QVector<Fast_Module_Status> fastStatus(int round, bool autozero = false)
{
    QVector<Fast_Module_Status> entries(kFastModuleStatusCount);
    for (int k = 0; k < entries.size(); ++k) {
        Fast_Module_Status &entry = entries[k];
        entry.supplyVoltage = static_cast<quint16>(1200 + (7 * round + k) % 50);
        entry.temperature = static_cast<quint16>(150 + (3 * round + k) % 40);
        entry.moduleState = static_cast<quint8>((round + k) % 5);
        entry.valueA = static_cast<quint32>(round * 1000 + k);
        entry.autozeroA = autozero ? 1 : 0;
        entry.autozeroB = entry.autozeroA;
    }
    return entries;
}

Module_Status staticStatus(int address, quint8 type, int round)
{
    const bool odd = round % 2 != 0;
    Module_Status status;
    status.moduleAddress = static_cast<quint8>(address);
    status.moduleType = type;
    status.bridgeIndexA = odd ? 1 : 2;
    status.bridgeIndexB = odd ? 2 : 1;
    status.rangeIndexA = odd ? 3 : 0;
    status.rangeIndexB = odd ? 0 : 3;
    status.functionCodeA = wireCode(ModuleType::StrainGauge);
    status.functionCodeB = wireCode(ModuleType::Voltage);
    status.revPolBits = odd ? 1 : 2;
    status.shuntPreselect = odd ? 5 : 10;
    status.serialNumber = QStringLiteral("SG-%1").arg(address);
    status.hardwareVersion = QStringLiteral("2.1");
    status.firmware1Version = QStringLiteral("1.4.2");
    status.firmware2Version = QStringLiteral("1.07");
    status.offsetA = QStringLiteral("%1.5").arg(round % 100);
    status.offsetB = odd ? QStringLiteral("Auto") : QStringLiteral("0");
    status.filterA = QString::number(1000 + round % 100);
    status.filterB = QString::number(2000 + round % 100);
    status.sensorList = QStringLiteral("120 Full$350 Full$1000 Full$120 Half$350 Half$1000 Half$");
    status.rangeList = QStringLiteral("0.5$1$2$5$10$20$50$100$");
    if (type == wireCode(ModuleType::Thermo)) {
        status.filterA = odd ? QStringLiteral("8") : QStringLiteral("16");
        status.filterB = odd ? QStringLiteral("2") : QStringLiteral("4");
    }
    return status;
}

Number number(const char *what, const std::vector<double> &times, const char *bare,
              const std::vector<double> &bareTimes)
{
    Number number(what, medianMs(times), "ms");
    number.worst(worstMs(times)).beside(bare, medianMs(bareTimes));
    return number;
}

/// A chain whose rows have all had their first status.
class Chain
{
public:
    static constexpr int kRoundBefore = -1; ///< of the status that each row has had

    explicit Chain(const QVector<quint8> &types)
        : m_types(types)
    {
        m_bench.app().Slot_SystemStatus(BenchApplication::systemStatus(types));
        confirmAll(kRoundBefore);
        QCoreApplication::processEvents();
    }

    void confirmAll(int round)
    {
        for (int address = 1; address <= m_types.size(); ++address)
            sendStatic(address, round);
    }

    void sendStatic(int address, int round)
    {
        const QVariant status = QVariant::fromValue(staticStatus(address, m_types.at(address - 1), round));
        emit m_bench.app().communication()->Signal_StaticModuleStatus(status);
    }

    double fastMs(const QVector<Fast_Module_Status> &status)
    {
        const QVariant data = QVariant::fromValue(status);
        return measureMs([&] { emit m_bench.app().communication()->Signal_FastModuleStatus(data); });
    }

    double staticMs(const Module_Status &status)
    {
        const QVariant data = QVariant::fromValue(status);
        return measureMs([&] { emit m_bench.app().communication()->Signal_StaticModuleStatus(data); });
    }

    ModuleDevice_View *row(int address)
    {
        return m_bench.app().analogModules().at(static_cast<std::size_t>(address - 1))->GetView();
    }

    /// The controls of all rows with this name.
    template <typename T>
    QList<T *> controls(const char *name)
    {
        QList<T *> found;
        for (int address = 1; address <= m_types.size(); ++address)
            found << row(address)->template findChildren<T *>(QLatin1String(name));
        return found;
    }

private:
    BenchApplication m_bench;
    const QVector<quint8> m_types;
};

/// The texts of fast statuses on labels of bare rows.
std::vector<double> bareLabelTimes(const BareChain &bare)
{
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const QVector<Fast_Module_Status> status = fastStatus(round);
        QStringList texts;
        for (int address = 1; address <= kModules; ++address) {
            const LiveValues values = liveValues(status.at(address));
            texts << displayformat::voltage(values.voltage.value_or(0))
                  << displayformat::temperature(values.temperature.value_or(0))
                  << displayformat::selftest(values.selftest);
        }
        times.push_back(measureMs([&] {
            for (std::size_t i = 0; i < bare.rows().size(); ++i) {
                const int first = 3 * static_cast<int>(i);
                bare.rows().at(i)->setVoltage(texts.at(first));
                bare.rows().at(i)->setTemperature(texts.at(first + 1));
                bare.rows().at(i)->setSelftest(texts.at(first + 2));
            }
        }));
        QCoreApplication::processEvents();
    }
    return times;
}

/// Red letters on the Auto Zero buttons of bare rows, and black ones again.
std::vector<double> bareButtonTimes(const BareChain &bare)
{
    QList<QPushButton *> buttons;
    for (const BareRow *row : bare.rows())
        buttons << row->findChildren<QPushButton *>(QStringLiteral("pushButton_Autozero"));
    std::vector<double> times;
    for (int round = 0; round < kGestureRounds * 2; ++round) {
        const QString style = round % 2 == 0 ? channelstyles::sent() : channelstyles::confirmed();
        times.push_back(measureMs([&] {
            for (QPushButton *button : buttons)
                button->setStyleSheet(style);
        }));
        QCoreApplication::processEvents();
    }
    return times;
}

/// What a static status of a bridge module changes, on one bare row: names, places in lists, filters and
/// texts of buttons.
std::vector<double> bareControlTimes(const BareRow &row)
{
    const auto labels = row.findChildren<QLabel *>(QRegularExpression(QStringLiteral("Vers")));
    const auto lists = row.findChildren<QComboBox *>();
    const auto boxes = row.findChildren<QSpinBox *>();
    const auto offsets = row.findChildren<QPushButton *>(QStringLiteral("pushButton_ManualOffset"));
    for (QComboBox *list : lists)
        list->addItems({QStringLiteral("120 Full"), QStringLiteral("350 Full"), QStringLiteral("1000 Full")});
    for (QSpinBox *box : boxes)
        box->setMaximum(1 << 20);
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const QString text = QString::number(1000 + round);
        times.push_back(measureMs([&] {
            for (QLabel *label : labels)
                label->setText(text);
            for (QComboBox *list : lists)
                list->setCurrentIndex(round % 3);
            for (QSpinBox *box : boxes)
                box->setValue(1000 + round);
            for (QPushButton *offset : offsets)
                offset->setText(text);
        }));
        QCoreApplication::processEvents();
    }
    return times;
}

/// Values and red letters in the spin boxes of bare rows.
std::vector<double> bareSpinBoxTimes(const BareChain &bare)
{
    QList<QSpinBox *> boxes;
    for (const BareRow *row : bare.rows())
        boxes << row->findChildren<QSpinBox *>();
    for (QSpinBox *box : boxes)
        box->setMaximum(1 << 20);
    std::vector<double> times;
    for (int round = 0; round < kGestureRounds; ++round) {
        times.push_back(measureMs([&] {
            for (QSpinBox *box : boxes) {
                box->setValue(3000 + round);
                box->setStyleSheet(channelstyles::sent());
            }
        }));
        for (QSpinBox *box : boxes)
            box->setStyleSheet(channelstyles::confirmed());
        QCoreApplication::processEvents();
    }
    return times;
}

// What must stand in the rows when a signal has returned.

void requireFast(Chain &chain, const QVector<Fast_Module_Status> &status)
{
    for (int address = 1; address <= kModules; ++address) {
        const LiveValues values = liveValues(status.at(address));
        const auto *voltage = chain.row(address)->findChild<QLabel *>(QStringLiteral("label_Voltage"));
        const auto *selftest = chain.row(address)->findChild<QLabel *>(QStringLiteral("label_SelftestSt"));
        require(voltage->text() == displayformat::voltage(values.voltage.value_or(0)) &&
                    selftest->text() == displayformat::selftest(values.selftest),
                "A row does not show its fast status.");
    }
}

void requireAutozero(Chain &chain, bool isRunning)
{
    const QString style = isRunning ? channelstyles::sent() : channelstyles::confirmed();
    const auto buttons = chain.controls<QPushButton>("pushButton_Autozero");
    require(buttons.size() >= kModules, "The rows have too few Auto Zero buttons.");
    require(std::all_of(buttons.begin(), buttons.end(),
                        [&style](const QPushButton *button) { return button->styleSheet() == style; }),
            "An Auto Zero button does not follow the fast status.");
}

void requireStatic(Chain &chain, const Module_Status &status)
{
    const auto boxes =
        chain.row(status.moduleAddress)->findChildren<QSpinBox *>(QStringLiteral("filterSpinBox"));
    require(boxes.size() == 2 && boxes.at(0)->value() == status.filterA.toInt() &&
                boxes.at(1)->value() == status.filterB.toInt(),
            "A row does not show its static status.");
}

void requireGesture(Chain &chain, int value)
{
    const auto boxes = chain.controls<QSpinBox>("filterSpinBox");
    require(boxes.size() == 2 * kModules, "The rows have too few filter boxes.");
    require(std::all_of(boxes.begin(), boxes.end(),
                        [value](const QSpinBox *box) {
                            return box->value() == value && box->styleSheet() == channelstyles::sent();
                        }),
            "The gesture did not reach a channel.");
}

void measureStatuses()
{
    const QVector<quint8> types = typesInTurn();
    std::vector<double> bareLabels;
    std::vector<double> bareButtons;
    std::vector<double> bareControls;
    {
        const BareChain bare(types);
        bareLabels = bareLabelTimes(bare);
        bareButtons = bareButtonTimes(bare);
        bareControls = bareControlTimes(*bare.rows().front());
    }
    Chain chain(types);
    std::vector<double> fast;
    std::vector<double> autozero;
    std::vector<double> single;
    for (int round = 0; round < kRounds; ++round) {
        const QVector<Fast_Module_Status> status = fastStatus(round);
        fast.push_back(chain.fastMs(status));
        requireFast(chain, status);
        QCoreApplication::processEvents();
    }
    for (int round = 0; round < kGestureRounds * 2; ++round) {
        autozero.push_back(chain.fastMs(fastStatus(round, round % 2 == 0)));
        requireAutozero(chain, round % 2 == 0);
        QCoreApplication::processEvents();
    }
    for (int round = 0; round < kRounds; ++round) {
        // Every module has its turn, and never twice with the same values.
        const int address = 1 + round % kModules;
        const Module_Status status = staticStatus(address, types.at(address - 1), round / kModules);
        single.push_back(chain.staticMs(status));
        requireStatic(chain, status);
        QCoreApplication::processEvents();
    }
    number("fast status to 128 modules", fast, "texts on bare rows", bareLabels)
        .atMost(kFastLimitMs)
        .report();
    number("fast status, all Auto Zeros begin or end", autozero, "colours on bare buttons", bareButtons)
        .worstAtMost(kGapLimitMs)
        .report();
    number("static status of one of 128 modules", single, "values in one bare row", bareControls)
        .atMost(kStaticLimitMs)
        .report();
}

void measureGesture()
{
    const QVector<quint8> types(kModules, wireCode(ModuleType::StrainGauge));
    const std::vector<double> bare = bareSpinBoxTimes(BareChain(types));
    Chain chain(types);
    auto *box = chain.row(1)->findChild<QSpinBox *>(QStringLiteral("filterSpinBox"));
    std::vector<double> times;
    for (int round = 0; round < kGestureRounds; ++round) {
        box->setValue(3000 + round);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::ShiftModifier);
        times.push_back(measureMs([&] { QCoreApplication::sendEvent(box, &press); }));
        requireGesture(chain, 3000 + round);
        QEventLoop loop;
        QTimer::singleShot(kPendingIsOver, &loop, &QEventLoop::quit);
        loop.exec();
        chain.confirmAll(round);
        QCoreApplication::processEvents();
    }
    Number("first filter gesture to 256 channels of 128 modules", times.front(), "ms")
        .atMost(kGapLimitMs)
        .beside("values in bare boxes, first time", bare.front())
        .report();
    number("filter gesture to 256 channels of 128 modules", times, "values in bare boxes", bare)
        .worstAtMost(kGapLimitMs)
        .report();
}

} // namespace

int main(int argc, char *argv[])
{
    return runWidgetBench(argc, argv, [] {
        measureStatuses();
        measureGesture();
    });
}
