#pragma once

#include "support/childbyname.h"
#include "systemfixture.h"
#include "waiting.h"
#include "widgetgestures.h"

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QStringList>

// The style sheets by which controls tell their state, as agreed.
namespace styles {

const QString kSent = QStringLiteral("color:#C00000");
const QString kConfirmed = QStringLiteral("color:black");
const QString kOffsetSent = QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor:#C00000;");
const QString kOffsetConfirmed = QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor:black;");
const QString kOffsetAuto =
    QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor: rgb(235, 220, 0);");
const QString kSwitchedOn =
    QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_blue.png);}QToolTip {}");
const QString kOn =
    QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_black.png);}QToolTip {}");
const QString kOff =
    QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_unchecked.png);}QToolTip {}");
const QString kShuntActive =
    QStringLiteral("QPushButton {border-image: url(:/pictures/shunt_aux_fake.bmp);}QToolTip {}");

} // namespace styles

/// The program before a simulated chain, with what a test of channel controls needs: controls by module
/// number, channel ('A' or 'B') and name, the commands that the device got, and what they changed there.
class ChannelFixture : public SystemFixture
{
public:
    explicit ChannelFixture(LinkKind kind = LinkKind::Tcp);

    /// Plugs the chain and starts the program; returns when the chain is read and the window is active. From
    /// then on the seconds pass by time.skip() only.
    void startChain(const QString &description);

    /// Waits until the session runs and all rows are there.
    void waitUntilRead();

    QWidget *row(int module) const;
    QWidget *strip(int module, char channel) const;

    template <typename T>
    T *control(int module, char channel, const char *name) const
    {
        return childByName<T>(strip(module, channel), name);
    }
    QPushButton *button(int module, char channel, const char *name) const
    {
        return control<QPushButton>(module, channel, name);
    }

    // The controls that every family has, under the family's own names.
    QComboBox *typeBox(int module, char channel) const;
    QComboBox *rangeBox(int module, char channel) const;
    QSpinBox *filterBox(int module, char channel) const;

    /// The dialog or message box of this name that is on the screen, null if there is none.
    QWidget *openDialog(const char *name) const;

    /// Number of dialogs and message boxes on the screen.
    static int openDialogCount();

    /// Payloads that the device got, in hex digits, without the requests for a status.
    QStringList commands() const;

    /// What differs in the device from the state at the start of the chain, as in "2B range=3".
    QStringList changes() const;

    /// Takes the present state of the device as the one to which changes() compares.
    void forgetChanges();

    /// Channels whose shunt button of this name shows that the shunt is active, as in "2B".
    QStringList activeShunts(const char *name) const;

    /// Adds rules to the fault script of the chain that is plugged.
    void addFaults(const QString &rules);

    /// The session goes on meanwhile.
    void waitForPolls();

    /// The controls that show a value as sent and not confirmed, as in "2B comboBox_RangeGain".
    QStringList unconfirmed() const;

    /// What a control shows and the device does not have, as in "2B comboBox_RangeGain: 5, not 10".
    QStringList mismatches() const;

private:
    QStringList state() const;

    QStringList m_before;
};
