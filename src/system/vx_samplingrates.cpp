#include "system/vx_samplingrates.h"

#include "base/gui/dialogs.h"
#include "system/rates/ratetable.h"

#include <QDebug>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 664;
constexpr int kHeight = 350;
constexpr int kMargin = 6;

/// The pairs that the system cannot run. They follow no rule.
QList<RateChoice> deadCells()
{
    struct DeadRate
    {
        int channels;
        int bitRate;
    };
    static constexpr DeadRate kDeadRates[] = {
        {2, 10000},  {2, 5000},   {4, 10000},  {128, 312}, {128, 10000}, {256, 10000},
        {256, 5000}, {256, 2500}, {256, 1250}, {256, 625}, {256, 312},
    };
    QList<RateChoice> cells;
    for (const DeadRate &rate : kDeadRates)
        cells.append({QString::number(rate.bitRate), QString::number(rate.channels)});
    return cells;
}

} // namespace

VX_SamplingRates::VX_SamplingRates(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_table(new RateTable(this))
{
    setObjectName(QStringLiteral("samplingRatesDialog"));
    setWindowTitle(tr("VX Sampling Rates"));
    setFixedSize(kWidth, kHeight);
    m_table->setObjectName(QStringLiteral("rateTable"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(m_table);
    const auto buttons = m_table->buttons();
    for (QPushButton *button : buttons)
        connect(button, &QPushButton::clicked, this, &VX_SamplingRates::handleBtnClick);
    Slot_disableAllBtns();
}

void VX_SamplingRates::showCurrentRate(const QString &text)
{
    static const QRegularExpression notDigits(QStringLiteral("[^0-9]+"));
    const QStringList numbers = text.split(notDigits, Qt::SkipEmptyParts);
    if (numbers.size() < 2)
        return;
    const RateChoice reported{numbers[0], numbers[1]};
    qDebug() << "************************Bitrate:" << reported.bitRate << "  CH CNT:" << reported.channels;
    m_table->markSelected(m_table->button(reported));
}

void VX_SamplingRates::handleBtnClick()
{
    const QObject *cell = sender();
    const auto choice = cell ? RateTable::choiceOf(cell->objectName()) : std::nullopt;
    if (!choice)
        return;
    m_table->markSelected(m_table->button(*choice));
    emit setSamplingRate(choice->bitRate, choice->channels);
    emit setGatewaySampling(choice->bitRate, choice->channels);
    qDebug() << "Bitrate:" << choice->bitRate << "  ChannelCnt" << choice->channels;
}

void VX_SamplingRates::Slot_disableAllBtns()
{
    m_table->setAllEnabled(false);
    m_table->clearSelection(); // what the device reported is no longer true, and a dead cell shows no mark
}

void VX_SamplingRates::Slot_EnableAllBtns()
{
    m_table->setAllEnabled(true);
    m_table->disable(deadCells());
}

void VX_SamplingRates::Slot_SetVXbitrateSettings(QString bitRate, QString channels)
{
    m_table->markSelected(m_table->button({bitRate, channels}));
    emit setSamplingRate(bitRate, channels);
}
