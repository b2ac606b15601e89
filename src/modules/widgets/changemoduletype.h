#pragma once

#include "protocol/records/groupcommand.h"

#include <QDialog>
#include <memory>

namespace Ui {
class ChangeModuleType;
}

/// Asks for the function that a channel of a universal module is to have. One dialog serves both channels
/// of a module; it never blocks.
class ChangeModuleType : public QDialog
{
    Q_OBJECT

public:
    explicit ChangeModuleType(QWidget *parent = nullptr);
    ~ChangeModuleType() override;

public slots:
    /// Shows the dialog for a channel. The strings are the name of its function, that of the module's other
    /// channel, and the channel's number; what is missing counts as empty.
    void Slot_Channel(QStringList channel);

    /// Another function was chosen: the sensor supply is switched off and cannot be set.
    void BtnChanged(int id);

    /// Sends the sensor supply as it is set.
    void VoltageCheckBoxClicked();

signals:
    /// Emitted when a function was confirmed for this channel, after the dialog has hidden.
    void moduleSelected(uchar channelNo, uchar channelType);

    /// Emitted when the sensor supply was clicked. `OnorOff` is 1 or 0, `voltage` the low byte of the
    /// voltage code.
    void voltageSupply(uchar channelNo, uchar OnorOff, uchar voltage);

    /// Emitted in place of moduleSelected() when the function was confirmed with Shift: it is meant for
    /// all channels of all universal modules.
    void Signal_ShiftClickCommand(GroupCommand cmd);

protected:
    /// The Ok button acts when it is pressed, by the mouse or by its keys.
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// Return confirms, wherever the focus is.
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Reach { Channel, AllUniversal };

    void checkFunction(const QString &name);
    bool filterOkKey(const QKeyEvent &event);
    void confirm(Reach reach);

    std::unique_ptr<Ui::ChangeModuleType> m_ui;
    QString m_otherFunction; ///< name of the function of the module's other channel
    quint16 m_channelNumber = 0;
};
