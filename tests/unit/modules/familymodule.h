#pragma once

#include "modulefixture.h"
#include "modules/channelmodule_view.h"
#include "modules/common/channelparameter.h"

#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QStringList>
#include <QtTest>
#include <vector>

Q_DECLARE_METATYPE(Channel)
Q_DECLARE_METATYPE(ChannelParameter)

/// A controller of one family with the row that an operator sees and the device behind it. Everything that
/// the controller asks for stands in `sent`, in the order in which it came.
///
/// Each parameter has three values, 0 to 2, that operator and device can set; those that can only be on or
/// off have two. The device has the lists for them.
class FamilyModule : public Module
{
public:
    explicit FamilyModule(int typeCode, int number = 3);
    FamilyModule(VirtualTime &sharedTime, int typeCode, int number);

    int typeCode() const { return m_typeCode; }
    int number() const { return m_number; }
    bool isThermo() const;
    bool isBridge() const;

    /// What can be set on a channel of the family.
    std::vector<ChannelParameter> parameters() const;
    bool has(ChannelParameter parameter) const;

    // The widgets of the row.
    ChannelModule_View &row() const;
    QWidget &strip(Channel channel) const;
    QComboBox *typeBox(Channel channel) const;
    QComboBox *rangeBox(Channel channel) const;
    QComboBox *box(ChannelParameter typeOrRange, Channel channel) const;
    QSpinBox *filterBox(Channel channel) const;
    QPushButton *button(Channel channel, const char *name) const;
    QPushButton *autozeroButton(Channel channel) const { return button(channel, "pushButton_Autozero"); }
    QPushButton *polarityButton(Channel channel) const;

    /// The boxes and dialogs that stand open over the row.
    QList<QDialog *> openDialogs() const;

    /// What the row shows of a parameter, with its colour or picture.
    QString shown(ChannelParameter parameter, Channel channel) const;

    /// What it has to show: `value` as confirmed by a status, or as sent by the operator.
    QString confirmed(ChannelParameter parameter, int value) const;
    QString asSent(ChannelParameter parameter, int value) const;

    /// All parameters of both channels as they are shown.
    QStringList shownAll() const;

    // The operator.

    /// Sets a parameter by a gesture on its widget. The thermo filter goes to the next value only. Auto Zero:
    /// 1 is a click, 2 a press of two seconds. The shunt: 1 switches the positive one.
    void change(ChannelParameter parameter, Channel channel, int value,
                Qt::KeyboardModifiers keys = Qt::NoModifier);
    void pick(QComboBox *box, int index, Qt::KeyboardModifiers keys = Qt::NoModifier);

    /// Types into the filter box; the text stands there, not sent.
    void typeFilter(Channel channel, const QString &text);

    /// Confirms a warning with its first button.
    void continueInWarning();

    // The device.

    /// What the device has from now on; it is told with the next report.
    void set(ChannelParameter parameter, Channel channel, int value);
    void reportStatic();
    void reportFast();

    /// Sets a value and reports it.
    void report(ChannelParameter parameter, Channel channel, int value);

    /// The first reports of the device. Both channels have all values 0.
    void begin();

    /// The first reports of a device whose channels have different values: A type 1, range 2, offset 1,
    /// filter 0, Auto Zero on; B type 2, range 1, offset 0, filter 2, inverted, shunt on.
    void beginWithDifferentChannels();

    /// What was asked for since the last call.
    QStringList takeSent();

    /// Calls the slot that asks for a change, as for a channel with this number.
    void callSlot(ChannelParameter parameter, int channel);

    Module_Status device;      ///< what the next static report tells
    Fast_Module_Status values; ///< the same of the fast one
    QStringList sent;

private:
    void watch();
    void changeOffset(Channel channel, const QString &text);
    void changeFilter(Channel channel, int value, Qt::KeyboardModifiers keys);
    void pressAutozero(Channel channel, bool isLong, Qt::KeyboardModifiers keys);
    static QString offsetText(int value);
    QString filterText(int value) const;

    int m_typeCode;
    int m_number;
    QObject m_context;
};

/// Clicks an arrow of a spin box.
void clickArrow(QSpinBox *box, bool up, Qt::KeyboardModifiers keys = Qt::NoModifier);

/// Checks a radio button of a dialog.
void clickRadio(const QDialog *dialog, const char *name);

/// Names of parameters for the rows of a test.
const char *nameOf(ChannelParameter parameter);

constexpr Channel kBothChannels[] = {Channel::A, Channel::B};

inline const char *nameOf(Channel channel)
{
    return channel == Channel::A ? "A" : "B";
}
