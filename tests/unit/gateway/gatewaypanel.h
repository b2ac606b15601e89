#pragma once

#include "gateway/gatewayzrt.h"
#include "support/childbyname.h"
#include "support/fakelinks.h"
#include "support/virtualtime.h"
#include "system/rates/ratetable.h"

#include <QApplication>
#include <QLineEdit>
#include <QMap>
#include <QPlainTextEdit>
#include <QPushButton>
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
        if (link == Link::Up) {
            dialog->connectToTcp();
            takeLines();
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

    QPushButton *cell(const char *name) const { return child<QPushButton>(name); }
    RateTable *table() const { return child<RateTable>("rateTable"); }
    QString text(const char *name) const { return child(name)->property("text").toString(); }
    bool isEnabled(const char *name) const { return child(name)->isEnabled(); }
    QString dialogue() const { return child<QPlainTextEdit>("RxBox")->toPlainText(); }
    void click(const char *name) const { QTest::mouseClick(child(name), Qt::LeftButton); }

    QColor lamp(const char *name) const { return child(name)->palette().color(QPalette::Base); }

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

    /// Names of the cells that cannot be clicked.
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

    void receive(QByteArray piece) const { emit sock->messagePacket(piece); }

    /// A status line of the gateway with these fields; the others are empty.
    void receiveStatus(const Fields &fields = {}) const
    {
        constexpr int kFields = 39;
        constexpr int kGuard = 3;
        QByteArrayList parts;
        for (int i = 0; i < kFields; ++i)
            parts.append(fields.value(i));
        parts[0] = "#S";
        if (!fields.contains(kGuard))
            parts[kGuard] = "2";
        receive(parts.join(';'));
    }

    /// The bytes that went out since the last call.
    QByteArray takeLines()
    {
        const QByteArray bytes = sock->frames.join();
        sock->frames.clear();
        return bytes;
    }

    /// The box of this name while it is open.
    template <typename T>
    T *openDialog(const char *name) const
    {
        T *found = childByName<T>(dialog.get(), name);
        return found->isVisible() ? found : nullptr;
    }

    VirtualTime time;
    FakeTcpSock *sock; ///< of the panel
    std::unique_ptr<GatewayZRT> dialog;
};
