#include "modules/channels/channel_view.h"

#include "base/gui/fonts.h"
#include "modules/channels/stripgeometry.h"
#include "modules/common/channelstyles.h"
#include "modules/common/widgetstyle.h"
#include "modules/widgets/fixedplaces.h"
#include "modules/widgets/qcomboboxnowheel.h"

#include <QEvent>
#include <QSpinBox>

Channel_View::Channel_View(QWidget *parent)
    : QFrame(parent)
{
    setFontIfChanged(*this, fonts::text());
    setFixedSize(rowcolumns::kStripWidth, rowcolumns::kStripHeight);
    setLayout(new FixedPlaces);
}

void Channel_View::setSharedControls(QComboBoxNoWheel &typeBox, QComboBoxNoWheel &rangeBox,
                                     QSpinBox &filterBox, const rowcolumns::Columns &columns)
{
    m_typeBox = &typeBox;
    m_rangeBox = &rangeBox;
    m_filterBox = &filterBox;
    stripgeometry::placeBox(typeBox, columns.firstInfo);
    stripgeometry::placeBox(rangeBox, columns.secondInfo);
    stripgeometry::placeBox(filterBox, columns.filter);
    filterBox.installEventFilter(this);
}

void Channel_View::setModels(QAbstractItemModel &types, QAbstractItemModel &ranges)
{
    m_typeBox->setModel(&types);
    m_rangeBox->setModel(&ranges);
}

void Channel_View::setFilterRange(int minimum, int maximum)
{
    m_filterBox->setRange(minimum, maximum);
}

void Channel_View::setTypeIndex(int index)
{
    m_typeBox->setCurrentIndex(index);
    setStyleIfChanged(*m_typeBox, channelstyles::confirmed());
}

void Channel_View::setRangeIndex(int index)
{
    m_rangeBox->setCurrentIndex(index);
    setStyleIfChanged(*m_rangeBox, channelstyles::confirmed());
}

void Channel_View::setFilterValue(int value)
{
    m_filterBox->setValue(value);
    setStyleIfChanged(*m_filterBox, channelstyles::confirmed());
}

void Channel_View::setAutozero(bool) {}

void Channel_View::setPolarity(bool) {}

void Channel_View::setOffset(const QString &) {}

void Channel_View::setPreselection(bool, bool) {}

void Channel_View::setLevel(double) {}

void Channel_View::setOffsetRange(double, double, double) {}

void Channel_View::typeActivated(int index)
{
    if (!acceptsInput())
        return;
    setStyleIfChanged(*m_typeBox, channelstyles::sent());
    if (m_typeShiftFlag) {
        m_typeShiftFlag = false;
        emitGroupCommand(GroupAction::TypeIndex, m_typeBox->currentIndex());
        return;
    }
    emitTypeIndex(index);
}

void Channel_View::rangeActivated(int index)
{
    if (!acceptsInput())
        return;
    if (m_rangeShiftFlag) {
        m_rangeShiftFlag = false;
        setStyleIfChanged(*m_rangeBox, channelstyles::sent());
        emitGroupCommand(GroupAction::RangeIndex, m_rangeBox->currentIndex());
        return;
    }
    sendRange(index);
}

void Channel_View::sendRange(int index)
{
    setStyleIfChanged(*m_rangeBox, channelstyles::sent());
    emitRangeIndex(index);
}

void Channel_View::sendFilter()
{
    setStyleIfChanged(*m_filterBox, channelstyles::sent());
    emit Signal_SendFilterValue(m_filterBox->value());
}

void Channel_View::emitGroupCommand(GroupAction action, int value)
{
    GroupCommand command;
    command.moduleType = groupStamp();
    command.command = static_cast<qint32>(action);
    command.value = value;
    emit Signal_ShiftClickCommand(command);
}

void Channel_View::applyGroupCommand(const GroupCommand &command)
{
    switch (command.action()) {
    case GroupAction::TypeIndex:
        setTypeIndex(command.value);
        typeActivated(command.value);
        break;
    case GroupAction::RangeIndex:
        applyGroupRange(command.value);
        break;
    case GroupAction::Filter:
        m_filterBox->setValue(command.value);
        sendFilter();
        break;
    case GroupAction::Autozero:
    case GroupAction::ChannelFunction:
    case GroupAction::AutoReset:
    case GroupAction::PositiveShuntOn:
    case GroupAction::PositiveShuntOff:
    case GroupAction::NegativeShuntOn:
    case GroupAction::NegativeShuntOff:
    case GroupAction::ActivatePreselected:
    case GroupAction::DeactivateShunts:
        break;
    }
}

void Channel_View::applyGroupRange(int index)
{
    setRangeIndex(index);
    rangeActivated(index);
}

bool Channel_View::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_filterBox && event->type() == QEvent::Wheel) {
        event->accept(); // an ignored wheel would go on to the list of rows
        return true;
    }
    return QFrame::eventFilter(watched, event);
}
