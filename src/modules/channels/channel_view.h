#pragma once

#include "protocol/records/groupcommand.h"

#include <QFrame>

class QAbstractItemModel;
class QComboBoxNoWheel;
class QSpinBox;

namespace rowcolumns {
struct Columns;
}

/// One channel's strip of controls in the row of its module: what the strips of all families share, a list
/// of types, a list of ranges and a filter. A strip never touches the device: it reports what the operator
/// wishes and shows what it is given.
class Channel_View : public QFrame
{
    Q_OBJECT

public:
    /// While updates are disabled the operator's gestures send nothing: until the first status, and while
    /// a status is applied. Disabled at first.
    void enableUpdates() { m_updatesEnabled = true; }
    void disableUpdates() { m_updatesEnabled = false; }

    /// The entries of the two boxes, for the life of the strip; the models stay the caller's.
    void setModels(QAbstractItemModel &types, QAbstractItemModel &ranges);
    void setFilterRange(int minimum, int maximum);

    // Confirmed values, shown in black. A family without the control ignores the value.

    /// An index beyond the list leaves the box blank.
    void setTypeIndex(int index);
    void setRangeIndex(int index);
    void setFilterValue(int value);
    virtual void setAutozero(bool running);
    virtual void setPolarity(bool reversed);
    virtual void setOffset(const QString &text);
    virtual void setPreselection(bool positive, bool negative);
    virtual void setLevel(double percent);

    /// Limits that the offset dialog is told.
    virtual void setOffsetRange(double minimum, double maximum, double step);

    /// Takes part in a gesture that was made on some matching channel, perhaps on this one. Commands that
    /// the family does not know are ignored.
    virtual void applyGroupCommand(const GroupCommand &command);

signals:
    /// The operator set the filter. Hz, but for thermo modules.
    void Signal_SendFilterValue(int value);

    /// A gesture with Shift: for all matching channels, this one included.
    void Signal_ShiftClickCommand(GroupCommand cmd);

protected:
    explicit Channel_View(QWidget *parent = nullptr);

    /// The controls that every family has, and where they stand; to be called once, when they exist.
    void setSharedControls(QComboBoxNoWheel &typeBox, QComboBoxNoWheel &rangeBox, QSpinBox &filterBox,
                           const rowcolumns::Columns &columns);

    bool acceptsInput() const { return m_updatesEnabled; }

    // The slots of the families' own names come here.
    void typeActivated(int index);
    void rangeActivated(int index);
    void noteTypeShiftClick() { m_typeShiftFlag = true; }
    void noteRangeShiftClick() { m_rangeShiftFlag = true; }

    /// Sends the range that was picked, whatever the guard says.
    void sendRange(int index);

    /// Shows the value as sent and sends it.
    void sendFilter();

    void emitGroupCommand(GroupAction action, int value = 0);

    /// Swallows the wheel over the filter box.
    bool eventFilter(QObject *watched, QEvent *event) override;

    // What a family adds.
    virtual void emitTypeIndex(int index) = 0;
    virtual void emitRangeIndex(int index) = 0;

    /// The range of a group command: index shown, then as if picked.
    virtual void applyGroupRange(int index);

    /// What is stamped on a group command as its module type; 0 leaves that to the module's controller.
    virtual quint8 groupStamp() const { return 0; }

    QComboBoxNoWheel *m_typeBox = nullptr;
    QComboBoxNoWheel *m_rangeBox = nullptr;
    QSpinBox *m_filterBox = nullptr;

private:
    bool m_updatesEnabled = false;
    bool m_typeShiftFlag = false;  ///< the next pick goes to all matching channels
    bool m_rangeShiftFlag = false; ///< the same for the range
};
