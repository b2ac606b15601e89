#include "modules/widgets/changemoduletype.h"

#include "base/gui/buttonkeys.h"
#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "modules/common/channelfunction.h"
#include "modules/common/gestures.h"
#include "modules/widgets/voltagecode.h"
#include "protocol/records/moduletypes.h"

#include "ui_changemoduletype.h"

#include <QDebug>

namespace {

// Places in the strings that describe a channel.
constexpr int kFunctionName = 0;
constexpr int kOtherFunctionName = 1;
constexpr int kChannelNumber = 2;

} // namespace

ChangeModuleType::ChangeModuleType(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::ChangeModuleType>())
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    m_ui->OkBtn->installEventFilter(this);
    connect(m_ui->CancelBtn, &QPushButton::clicked, this, &ChangeModuleType::reject);
    connect(m_ui->modulesGrp, &QButtonGroup::idClicked, this, &ChangeModuleType::BtnChanged);
    connect(m_ui->supplyVoltCheckBx, &QCheckBox::clicked, this, &ChangeModuleType::VoltageCheckBoxClicked);
}

ChangeModuleType::~ChangeModuleType() = default;

void ChangeModuleType::Slot_Channel(QStringList channel)
{
    m_otherFunction = channel.value(kOtherFunctionName);
    m_channelNumber = channel.value(kChannelNumber).toUShort();
    m_ui->groupBox->setTitle(QStringLiteral("ANALOG Module, Channel %1").arg(m_channelNumber));
    checkFunction(channel.value(kFunctionName));
    BtnChanged(m_ui->modulesGrp->checkedId());
    m_ui->OkBtn->setDown(false); // it hides the dialog when pressed and may not see the release
    showModal(*this);
}

void ChangeModuleType::checkFunction(const QString &name)
{
    const int code = functionCode(name);
    if (code == wireCode(ModuleType::StrainGauge))
        m_ui->strainGBtn->setChecked(true);
    else if (code == wireCode(ModuleType::Voltage))
        m_ui->voltageBtn->setChecked(true);
    else if (code == wireCode(ModuleType::Iepe))
        m_ui->iepeBtn->setChecked(true);
    else if (code == wireCode(ModuleType::Potentiometer))
        m_ui->potBtn->setChecked(true);
    else
        qDebug() << "Unknown Channel type";
}

void ChangeModuleType::BtnChanged(int id)
{
    Q_UNUSED(id)
    qDebug() << "Button Toggled";
    m_ui->VoltValEditBox->setEnabled(false);
    m_ui->supplyVoltCheckBx->setEnabled(false);
    m_ui->supplyVoltCheckBx->setChecked(false);
}

void ChangeModuleType::VoltageCheckBoxClicked()
{
    const quint16 code = voltageCode(m_ui->VoltValEditBox->text());
    const uchar onOrOff = m_ui->supplyVoltCheckBx->isChecked() ? 1 : 0;
    emit voltageSupply(static_cast<uchar>(m_channelNumber), onOrOff, static_cast<uchar>(code));
}

bool ChangeModuleType::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_ui->OkBtn)
        return QDialog::eventFilter(watched, event);
    if (isMousePress(*event)) {
        const bool toAll = static_cast<QMouseEvent *>(event)->modifiers() == Qt::ShiftModifier;
        confirm(toAll ? Reach::AllUniversal : Reach::Channel);
        return toAll;
    }
    if (event->type() == QEvent::KeyPress)
        return filterOkKey(*static_cast<QKeyEvent *>(event));
    return false;
}

bool ChangeModuleType::filterOkKey(const QKeyEvent &event)
{
    if (!isButtonKey(event))
        return false;
    // The key that opened the dialog may still be down and repeat.
    if (!isKeyRepeat(event)) {
        const bool toAll = (event.modifiers() & ~Qt::KeypadModifier) == Qt::ShiftModifier;
        confirm(toAll ? Reach::AllUniversal : Reach::Channel);
    }
    return true;
}

void ChangeModuleType::keyPressEvent(QKeyEvent *event)
{
    if (!isReturn(*event)) {
        QDialog::keyPressEvent(event);
        return;
    }
    // The dialog would click the default button, and a click of the Ok button does nothing.
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && !isKeyRepeat(*event))
        confirm(Reach::Channel);
}

void ChangeModuleType::confirm(Reach reach)
{
    hide();
    const QAbstractButton *chosen = m_ui->modulesGrp->checkedButton();
    if (!chosen)
        return;
    const int code = functionCode(chosen->text());
    switch (reach) {
    case Reach::Channel:
        emit moduleSelected(static_cast<uchar>(m_channelNumber), static_cast<uchar>(code));
        return;
    case Reach::AllUniversal: {
        GroupCommand command;
        command.moduleType = wireCode(ModuleType::Universal);
        command.command = static_cast<qint32>(GroupAction::ChannelFunction);
        command.value = code;
        emit Signal_ShiftClickCommand(command);
        return;
    }
    }
}
