#pragma once

#include "base/gui/fonts.h"
#include "gateway/gatewayzrt.h"
#include "support/fakelinks.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMap>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QtTest>
#include <memory>

/// The gateway's panel on screen, with a scripted link in place of the socket and time that stands still.
class ReqPanel
{
public:
    enum class Link { Closed, Up };
    using Fields = QMap<int, QByteArray>;

    explicit ReqPanel(Link link = Link::Up)
    {
        auto socket = std::make_unique<FakeTcpSock>(time);
        sock = socket.get();
        panel = std::make_unique<GatewayZRT>(time, std::make_unique<TcpComm>(time, std::move(socket)));
        panel->show();
        QApplication::setActiveWindow(panel.get());
        if (!QTest::qWaitForWindowActive(panel.get()))
            qFatal("the panel did not become the active window");
        if (link == Link::Up) {
            click("tcpConnect_Btn");
            forget();
        }
    }

    /// The widget of this name in the panel itself, not in one of its dialogs.
    template <typename T>
    T *child(const char *name) const
    {
        QList<T *> found;
        const auto all = panel->findChildren<T *>(QString::fromLatin1(name));
        for (T *widget : all) {
            if (widget->window() == panel.get())
                found.append(widget);
        }
        if (found.size() != 1)
            qFatal("%d widgets are named %s", static_cast<int>(found.size()), name);
        return found.first();
    }

    QString text(const char *name) const { return child<QWidget>(name)->property("text").toString(); }
    int index(const char *combo) const { return child<QComboBox>(combo)->currentIndex(); }
    bool isChecked(const char *name) const { return child<QAbstractButton>(name)->isChecked(); }
    bool isEnabled(const char *name) const { return child<QWidget>(name)->isEnabled(); }
    bool isShown(const char *name) const { return child<QWidget>(name)->isVisible(); }

    void click(const char *name) const
    {
        auto *widget = child<QWidget>(name);
        // A radio button takes clicks on its mark and its text only.
        const auto *radio = qobject_cast<QRadioButton *>(widget);
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier,
                          radio ? QPoint(8, radio->height() / 2) : QPoint());
    }

    /// Opens the list and picks the entry with the mouse.
    void pick(const char *name, int entry) const
    {
        auto *box = child<QComboBox>(name);
        QVERIFY2(box->isEnabled(), name);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(box->view()->isVisible());
        const QRect place = box->view()->visualRect(box->model()->index(entry, 0));
        QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          {box->view()->viewport()->width() / 2, place.center().y()});
        QTRY_VERIFY(!box->view()->isVisible());
    }

    /// Everything that went to the gateway since the last call.
    QByteArray sent() const
    {
        const QByteArray bytes = sock->frames.join();
        sock->frames.clear();
        return bytes;
    }

    QString dialogue() const { return child<QWidget>("RxBox")->property("plainText").toString(); }

    /// What was added to the dialogue since the last call.
    QString shown()
    {
        const QString all = dialogue();
        const QString added = all.mid(m_seen);
        m_seen = all.size();
        return added;
    }

    void forget()
    {
        sent();
        shown();
    }

    /// The gateway sends this piece.
    void receive(QByteArray piece) const { emit sock->messagePacket(piece); }

    /// A status line of 39 fields that is valid unless `fields` say otherwise.
    static QByteArray status(const Fields &fields = {})
    {
        QByteArrayList list;
        for (int i = 0; i < 39; ++i)
            list.append(QByteArray());
        list[0] = "#S";
        list[3] = "2";
        for (auto field = fields.begin(); field != fields.end(); ++field)
            list[field.key()] = field.value();
        return list.join(';');
    }

    void report(const Fields &fields) const { receive(status(fields)); }

    /// The open dialog or box of this name; null if there is none.
    template <typename T = QDialog>
    static T *open(const char *name)
    {
        T *found = nullptr;
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (window->isVisible() && window->objectName() == QLatin1String(name))
                found = qobject_cast<T *>(window);
        }
        return found;
    }

    static QLineEdit *edit(const QDialog *dialog, const char *name)
    {
        return dialog->findChild<QLineEdit *>(QString::fromLatin1(name));
    }

    static void type(QLineEdit *field, const QString &text)
    {
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }

    static void press(const QDialog *dialog, QDialogButtonBox::StandardButton button)
    {
        const auto *box = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    }

    static void answer(QMessageBox *box, QMessageBox::StandardButton button)
    {
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    }

    /// Names of the cells of the table that the filter takes, row by row.
    template <typename Filter>
    QStringList cells(Filter filter) const
    {
        QStringList names;
        for (int bitRate : {10000, 5000, 2500, 1250, 625, 312}) {
            for (int channels : {2, 4, 8, 16, 32, 64, 128, 256}) {
                const QString name = QStringLiteral("%1,%2").arg(channels).arg(bitRate);
                if (filter(cell(name)))
                    names.append(name);
            }
        }
        return names;
    }

    QPushButton *cell(const QString &name) const { return child<QPushButton>(name.toLatin1().constData()); }

    QStringList liveCells() const
    {
        return cells([](const QPushButton *cell) { return cell->isEnabled(); });
    }
    QStringList deadCells() const
    {
        return cells([](const QPushButton *cell) { return !cell->isEnabled(); });
    }
    QStringList markedCells() const
    {
        return cells([](const QPushButton *cell) {
            return cell->styleSheet() == QStringLiteral("border: 2px solid blue");
        });
    }
    static QStringList alwaysDead()
    {
        return {"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"};
    }

    /// The colour of a lamp; invalid if its colour groups differ.
    QColor lamp(const char *name) const
    {
        const QPalette palette = child<QLineEdit>(name)->palette();
        const QColor colour = palette.color(QPalette::Active, QPalette::Base);
        for (auto group : {QPalette::Inactive, QPalette::Disabled}) {
            if (palette.color(group, QPalette::Base) != colour)
                return QColor();
        }
        return colour;
    }

    VirtualTime time;
    FakeTcpSock *sock = nullptr; ///< belongs to the panel's link
    std::unique_ptr<GatewayZRT> panel;

private:
    int m_seen = 0;
};
