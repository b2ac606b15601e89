#pragma once

#include <QDialog>

class RateTable;

/// The dialog in which the user chooses the data rate of the whole system. All cells are dead until a system
/// was read, and those that it cannot run stay dead. What is marked is what the device reported, or what the
/// user clicked last.
class VX_SamplingRates : public QDialog
{
    Q_OBJECT

public:
    explicit VX_SamplingRates(QWidget *parent = nullptr);

    /// Marks the cell that the bit rate text of the device names: its first two numbers are the bit rate and
    /// the number of channels. A text with fewer numbers, or naming a dead cell, marks nothing.
    void showCurrentRate(const QString &text);

public slots:
    /// A cell was clicked; to be called through its signal.
    void handleBtnClick();
    void Slot_disableAllBtns();
    /// Enables all cells but those that the system cannot run.
    void Slot_EnableAllBtns();
    /// The gateway's panel chose a rate: marks it and passes it on to the device, even if its cell is dead
    /// here. The gateway does not hear of it again.
    void Slot_SetVXbitrateSettings(QString bitRate, QString channels);

signals:
    /// A rate for the device: kBit/s and number of channels.
    void setSamplingRate(QString bitRate, QString channels);
    /// The same for the gateway; emitted after the one for the device, for the user's clicks only.
    void setGatewaySampling(QString bitRate, QString channels);

private:
    RateTable *m_table; // child of this dialog
};
