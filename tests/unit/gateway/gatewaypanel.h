#pragma once

#include "base/gui/fonts.h"
#include "gateway/gatewayzrt.h"
#include "support/childbyname.h"
#include "support/fakelinks.h"
#include "support/virtualtime.h"
#include "system/rates/ratetable.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMap>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <memory>

/// The gateway's panel on screen, over a scripted link and in time that stands still until it is moved.
class GatewayPanel
{
public:
    enum class Link { Down, Up };
    using Fields = QMap<int, QByteArray>;

    explicit GatewayPanel(Link link = Link::Up)
    {
        auto socket = std::make_unique<FakeTcpSock>(time);
        sock = socket.get();
        auto comm = std::make_unique<TcpComm>(time, std::move(socket));
        dialog = std::make_unique<GatewayZRT>(time, std::move(comm));
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("The panel did not become the active window");
        if (link == Link::Up) {
            dialog->connectToTcp();
            forget();
        }
    }

    /// The widget of this name on the panel itself; its dialogs have widgets of the same names.
    template <typename T = QWidget>
    T *child(const char *name) const
    {
        T *found = nullptr;
        const auto all = dialog->findChildren<T *>(QString::fromLatin1(name));
        for (T *widget : all) {
            if (widget->window() != dialog.get())
                continue;
            if (found)
                qFatal("Two widgets are named %s", name);
            found = widget;
        }
        if (!found)
            qFatal("No widget is named %s", name);
        return found;
    }

    QPushButton *cell(const QString &name) const { return child<QPushButton>(qPrintable(name)); }
    RateTable *table() const { return child<RateTable>("rateTable"); }
    QString text(const char *name) const { return child(name)->property("text").toString(); }
    int index(const char *combo) const { return child<QComboBox>(combo)->currentIndex(); }
    bool isChecked(const char *name) const { return child<QAbstractButton>(name)->isChecked(); }
    bool isEnabled(const char *name) const { return child(name)->isEnabled(); }
    bool isShown(const char *name) const { return child(name)->isVisible(); }

    void click(const char *name) const
    {
        auto *widget = child(name);
        // A radio button takes clicks on its mark and its text only.
        const auto *radio = qobject_cast<QRadioButton *>(widget);
        const QPoint mark = radio ? QPoint(8, radio->height() / 2) : QPoint();
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, mark);
    }

    void openList(const char *combo) const
    {
        auto *box = child<QComboBox>(combo);
        QVERIFY2(box->isEnabled(), combo);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(box->view()->isVisible());
    }

    /// Opens the list of a combo box and picks an entry with the mouse.
    void pick(const char *combo, int entry) const
    {
        openList(combo);
        QAbstractItemView *list = child<QComboBox>(combo)->view();
        const QRect place = list->visualRect(list->model()->index(entry, 0));
        const QPoint middle(list->viewport()->width() / 2, place.center().y());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
        QTRY_VERIFY(!list->isVisible());
    }

    /// Types a text in place of what the field holds.
    static void type(QLineEdit *field, const QString &text)
    {
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }

    /// The colour of a lamp; invalid if it depends on whether the lamp is enabled or its window active.
    QColor lamp(const char *name) const
    {
        const QPalette palette = child(name)->palette();
        const QColor colour = palette.color(QPalette::Active, QPalette::Base);
        for (const auto group : {QPalette::Inactive, QPalette::Disabled}) {
            if (palette.color(group, QPalette::Base) != colour)
                return QColor();
        }
        return colour;
    }

    /// Name of the cell that shows as the present one; empty if none does.
    QString marked() const
    {
        QStringList names;
        const auto cells = table()->buttons();
        for (const QPushButton *cell : cells) {
            if (cell->styleSheet() == QStringLiteral("border: 2px solid blue"))
                names.append(cell->objectName());
        }
        return names.join(QLatin1Char(' '));
    }

    /// Names of the cells that cannot be clicked, row by row.
    QStringList dead() const
    {
        QStringList names;
        const auto cells = table()->buttons();
        for (const QPushButton *cell : cells) {
            if (!cell->isEnabled())
                names.append(cell->objectName());
        }
        return names;
    }

    /// Those that the gateway never runs.
    static QStringList alwaysDead()
    {
        return {"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"};
    }

    void receive(QByteArray piece) const { emit sock->messagePacket(piece); }

    /// A status line of the gateway with these fields; the others are empty. It is valid unless they say
    /// otherwise.
    static QByteArray statusLine(const Fields &fields = {})
    {
        constexpr int kFields = 39;
        constexpr int kGuard = 3;
        QByteArrayList parts;
        for (int i = 0; i < kFields; ++i)
            parts.append(fields.value(i));
        parts[0] = "#S";
        if (!fields.contains(kGuard))
            parts[kGuard] = "2";
        return parts.join(';');
    }

    void receiveStatus(const Fields &fields = {}) const { receive(statusLine(fields)); }

    /// The bytes that went out since the last call.
    QByteArray takeLines() const
    {
        const QByteArray bytes = sock->frames.join();
        sock->frames.clear();
        return bytes;
    }

    QString dialogue() const { return child<QPlainTextEdit>("RxBox")->toPlainText(); }

    /// What was added to the dialogue since the last call.
    QString takeShown()
    {
        const QString all = dialogue();
        const QString added = all.mid(m_seen);
        m_seen = all.size();
        return added;
    }

    void forget()
    {
        takeLines();
        takeShown();
    }

    /// The box or dialog of this name while it is open.
    template <typename T = QDialog>
    static T *openDialog(const char *name)
    {
        T *found = nullptr;
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (!window->isVisible() || window->objectName() != QLatin1String(name))
                continue;
            if (found)
                qFatal("Two dialogs are named %s", name);
            found = qobject_cast<T *>(window);
        }
        return found;
    }

    static void pressOk(const QDialog *dialog)
    {
        QTest::mouseClick(childByName<QPushButton>(dialog, "okButton"), Qt::LeftButton);
    }

    static void pressCancel(const QDialog *dialog)
    {
        QTest::mouseClick(childByName<QPushButton>(dialog, "cancelButton"), Qt::LeftButton);
    }

    /// Answers the open question of this name.
    static void answer(const char *name, QMessageBox::StandardButton button)
    {
        const auto *box = openDialog<QMessageBox>(name);
        QVERIFY2(box, name);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    }

    void checkClosed() const
    {
        QCOMPARE(text("tcpConnect_Btn"), QStringLiteral("Connect"));
        QCOMPARE(lamp("tcpLed"), QColor(Qt::gray));
        QCOMPARE(lamp("PCM_Led"), QColor(Qt::gray));
        QCOMPARE(dead().size(), 48);
        QCOMPARE(marked(), QString());
        checkEnabled(false);
    }

    void checkConnected() const
    {
        QCOMPARE(text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
        QCOMPARE(lamp("tcpLed"), QColor(Qt::green));
        QCOMPARE(dead(), alwaysDead());
        checkEnabled(true);
    }

    VirtualTime time;
    FakeTcpSock *sock; ///< of the panel
    std::unique_ptr<GatewayZRT> dialog;

private:
    /// Those that work only while the link is up, the cells of the table aside, or only without it.
    void checkEnabled(bool connected) const
    {
        QVERIFY(isEnabled("tcpConnect_Btn"));
        for (const char *name : {"ipAddrBox", "portNo"})
            QVERIFY2(isEnabled(name) != connected, name);
        for (const char *name : {"groupBoxEndian", "groupBoxDataLength", "groupBoxDataFormat",
                                 "groupBoxTemperature", "comboSimultn", "comboMode"})
            QVERIFY2(isEnabled(name) == connected, name);
    }

    int m_seen = 0;
};
