#pragma once

#include "modules/channels/channeltype1_view.h"
#include "modules/channels/channeltype2_view.h"
#include "modules/channels/channeltype3_view.h"
#include "modules/channels/channeltype4_view.h"
#include "signalrecorder.h"
#include "support/childbyname.h"
#include "support/virtualtime.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QStringListModel>
#include <QtTest>
#include <memory>

// The style sheets by which the controls tell their state, as agreed.
inline const QString kRed = QStringLiteral("color:#C00000");
inline const QString kBlack = QStringLiteral("color:black");
inline const QString kBluePicture =
    QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_blue.png);}QToolTip {}");
inline const QString kBlackPicture =
    QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_black.png);}QToolTip {}");
inline const QString kUncheckedPicture =
    QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_unchecked.png);}QToolTip {}");
inline const QString kFakePicture =
    QStringLiteral("QPushButton {border-image: url(:/pictures/shunt_aux_fake.bmp);}QToolTip {}");

/// The strip of one family in a window beside another control, with lists and with updates enabled.
class StripFixture
{
public:
    enum class Updates { AsConstructed, Enabled };

    explicit StripFixture(int type, Updates updates = Updates::Enabled)
        : family(type)
    {
        strip = makeStrip();
        strip->move(0, 0);
        window.resize(strip->width(), strip->height() + 40);
        elsewhere = new QLineEdit(&window);
        elsewhere->move(0, strip->height() + 5);
        types.setStringList({"first", "second", "third"});
        ranges.setStringList({"1", "10", "100"});
        strip->setModels(types, ranges);
        strip->setFilterRange(family == 3 ? 1 : 0, family == 3 ? 32 : 999999999);
        if (updates == Updates::Enabled)
            strip->enableUpdates();
        recorder = std::make_unique<SignalRecorder>(*strip, QFrame::staticMetaObject);
    }

    void show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        elsewhere->setFocus();
    }

    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(strip, name);
    }

    QPushButton *button(const char *name) const { return child<QPushButton>(name); }
    QComboBox *typeBox() const
    {
        return child<QComboBox>(family == 3 ? "comboBox_ThermoDeviceType" : "comboBox_BridgeType");
    }
    QComboBox *rangeBox() const
    {
        if (family == 3)
            return child<QComboBox>("comboBox_TemperatureRange");
        return child<QComboBox>(family == 2 ? "comboBox_RangeGain" : "comboBox_Gain");
    }
    QSpinBox *filterBox() const { return child<QSpinBox>("filterSpinBox"); }
    QPushButton *autozero() const { return button("pushButton_Autozero"); }
    QPushButton *polarity() const { return button(family == 1 ? "checkBox_RevPol_100" : "checkBox_RevPol"); }

    QString typeSignal(int index) const
    {
        return (family == 3 ? QStringLiteral("Signal_SendThermoDeviceTypeIndex(%1)")
                            : QStringLiteral("Signal_SendBridgeTypeIndex(%1)"))
            .arg(index);
    }
    QString rangeSignal(int index) const
    {
        if (family == 3)
            return QStringLiteral("Signal_SendTemperatureRangeIndex(%1)").arg(index);
        return (family == 2 ? QStringLiteral("Signal_SendRangeGainIndex(%1)")
                            : QStringLiteral("Signal_SendGainIndex(%1)"))
            .arg(index);
    }
    static QString filterSignal(int value) { return QStringLiteral("Signal_SendFilterValue(%1)").arg(value); }
    static QString groupSignal(int command, int value = 0)
    {
        return QStringLiteral("Signal_ShiftClickCommand(0,%1,%2)").arg(command).arg(value);
    }

    void apply(int command, int value = 0) const
    {
        GroupCommand group;
        group.command = command;
        group.value = value;
        strip->applyGroupCommand(group);
    }

    static void openList(QComboBox *box)
    {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(box->view()->isVisible());
    }

    /// Opens the list and picks the item with the mouse.
    static void pick(QComboBox *box, int index, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        openList(box);
        QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, keys, itemPlace(box, index));
        QTRY_VERIFY(!box->view()->isVisible());
    }

    static QPoint itemPlace(QComboBox *box, int index)
    {
        // The items may be wider than the list.
        return {box->view()->viewport()->width() / 2,
                box->view()->visualRect(box->model()->index(index, 0)).center().y()};
    }

    /// The arrow for up or down of the spin box.
    static QPoint arrow(const QSpinBox *box, bool up)
    {
        QStyleOptionSpinBox option;
        option.initFrom(box);
        option.subControls = QStyle::SC_All;
        option.frame = box->hasFrame();
        return box->style()
            ->subControlRect(QStyle::CC_SpinBox, &option, up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown,
                             box)
            .center();
    }

    void holdAutozero(int ms, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mousePress(autozero(), Qt::LeftButton, keys);
        time.advance(ms);
        QTest::mouseRelease(autozero(), Qt::LeftButton, keys);
    }

    static void type(QSpinBox *box, const QString &text)
    {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }

    /// The open box or dialog of the strip with this name, or null.
    QMessageBox *messageBox(const char *name) const
    {
        QMessageBox *open = nullptr;
        for (QMessageBox *box : strip->findChildren<QMessageBox *>(QString::fromLatin1(name))) {
            if (!box->isVisible())
                continue;
            if (open)
                qFatal("more than one box %s is open", name);
            open = box;
        }
        return open;
    }

    const int family;
    VirtualTime time;
    QStringListModel types;
    QStringListModel ranges;
    QWidget window;
    QPointer<Channel_View> strip; ///< belongs to the window
    QLineEdit *elsewhere = nullptr;
    std::unique_ptr<SignalRecorder> recorder;

private:
    Channel_View *makeStrip()
    {
        switch (family) {
        case 1:
            return new ChannelType1_View(time, &window);
        case 2:
            return new ChannelType2_View(time, &window);
        case 3:
            return new ChannelType3_View(&window);
        default:
            return new ChannelType4_View(time, &window);
        }
    }
};

/// Rows for the families that share a behaviour, in the column "family".
inline void addFamilies(std::initializer_list<int> families)
{
    QTest::addColumn<int>("family");
    for (const int family : families)
        QTest::addRow("type %d", family) << family;
}
