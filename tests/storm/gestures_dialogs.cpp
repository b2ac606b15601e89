#include "gestures.h"

#include "comparison.h"
#include "hands.h"
#include "program.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <utility>

namespace storm {

QString Gestures::leave(QWidget *dialog, Way way)
{
    const QString done = QStringLiteral("leave %1 by %2").arg(dialogName(*dialog), nameOf(way));
    const QPointer<QWidget> left = dialog;
    const auto expect = [this, left, way] {
        if (left)
            m_book.expectLeave(left, way);
    };
    switch (way) {
    case Way::Escape:
        m_hands.activate(dialog);
        m_hands.then(expect);
        m_hands.key(Qt::Key_Escape);
        return done;
    case Way::Close:
        m_hands.then(expect);
        m_hands.close(dialog);
        return done;
    case Way::Accept:
    case Way::Refuse:
        break;
    }
    if (way == Way::Accept) {
        work(dialog);
        if (dialogName(*dialog) == QLatin1String("PortLister"))
            chooseLink(dialog, m_chance.happens(0.8)); // whatever was typed before
    }
    pressButton(dialog, way);
    return done;
}

QString Gestures::leaveAccepting(QWidget *dialog)
{
    pressButton(dialog, Way::Accept);
    return QStringLiteral("leave %1 as it is").arg(dialogName(*dialog));
}

void Gestures::pressButton(QWidget *dialog, Way way)
{
    const QPointer<QWidget> left = dialog;
    m_hands.then([this, left, way] {
        QAbstractButton *button = left ? buttonOf(*left, way) : nullptr;
        if (!button || !button->isVisible() || !button->isEnabled())
            return;
        m_book.expectLeave(left, way);
        const bool isFunction = dialogName(*left) == QLatin1String("ChangeModuleType");
        m_hands.click(button, isFunction ? someModifiers() : Qt::NoModifier);
    });
}

QString Gestures::work(QWidget *dialog)
{
    if (dialog->inherits("QFileDialog"))
        return workInFileDialog(dialog);
    if (dialogName(*dialog) == QLatin1String("PortLister") && m_chance.happens(0.5))
        return chooseLink(dialog, m_chance.happens(0.8));
    QList<QWidget *> controls;
    for (QWidget *control : controlsOf(*dialog).others) {
        const bool leaves =
            control == buttonOf(*dialog, Way::Accept) || control == buttonOf(*dialog, Way::Refuse);
        if (!leaves)
            controls.append(control);
    }
    return controls.isEmpty() ? QString() : use(m_chance.oneOf(controls));
}

QString Gestures::chooseLink(QWidget *portLister, bool live, const std::optional<Comm_Type> &type)
{
    const bool serial = type ? *type == Comm_Type::Serial : m_chance.happens(0.4);
    const char *kind = serial ? "checkBoxComprt" : "checkBoxGateway";
    const char *field = serial ? "comBox" : "ipAddrBox";
    const Addresses &places = m_program.addresses();
    QString text = serial ? QString::number(kLivePort) : places.device;
    if (!live)
        text = serial ? QString::number(kDeadPort) : m_chance.happens(0.5) ? places.nobody : places.deaf;
    clickIn(portLister, kind);
    const QPointer<QWidget> dialog = portLister;
    m_hands.then([this, dialog, field, text] {
        QWidget *edit = dialog ? inWindow(dialog, field) : nullptr;
        if (!edit)
            return;
        m_hands.click(edit);
        m_hands.typeOver(text);
    });
    return QStringLiteral("choose %1").arg(text);
}

QString Gestures::connectPanel(QWidget *panel)
{
    m_hands.rest(std::chrono::milliseconds(50)); // the connection may be on its way
    const Addresses &places = m_program.addresses();
    const QString address = m_chance.oneOf(QStringList{places.gateway, places.otherGateway});
    const QPointer<QWidget> dialog = panel;
    m_hands.then([this, dialog, address] {
        QWidget *place = dialog ? inWindow(dialog, "ipAddrBox") : nullptr; // not while it is connected
        QWidget *port = dialog ? inWindow(dialog, "portNo") : nullptr;
        if (!place || !port)
            return;
        m_hands.click(place);
        m_hands.typeOver(address);
        m_hands.click(port);
        m_hands.typeOver(QString::number(m_program.gatewayPort()));
    });
    m_hands.then([this, dialog] {
        if (dialog && !connectedPanel()) // else the same button ends it
            clickIn(dialog, "tcpConnect_Btn");
    });
    return QStringLiteral("click tcpConnect_Btn");
}

QString Gestures::chooseFile(QWidget *dialog, const QString &name)
{
    const QPointer<QWidget> chooser = dialog;
    m_hands.then([this, chooser, name] {
        QWidget *edit = chooser ? inWindow(chooser, "fileNameEdit") : nullptr;
        if (!edit)
            return;
        m_hands.click(edit);
        m_hands.typeOver(name);
        m_hands.then([this] {
            if (QApplication::activePopupWidget()) // the names that begin so
                m_hands.key(Qt::Key_Escape);
        });
    });
    return QStringLiteral("name the file ") + name;
}

QString Gestures::workInFileDialog(QWidget *dialog)
{
    if (m_chance.happens(0.2))
        return clickIn(dialog, m_chance.happens(0.5) ? "detailModeButton" : "listModeButton");
    if (dialogName(*dialog) == QLatin1String("firmwareFileDialog")) {
        // The dialog begins where any file dialog was last.
        const QString folder = m_program.folder() + QLatin1Char('/');
        if (!m_wantedImage.isEmpty())
            return chooseFile(dialog, folder + std::exchange(m_wantedImage, QString()));
        return chooseFile(dialog,
                          folder + m_chance.oneOf(QStringList{Program::smallImage(), Program::largeImage(),
                                                              Program::wrongImage()}));
    }
    // Names with a point get no suffix from the dialog, and so meet the file of an earlier report.
    const QStringList names{QStringLiteral("report"), QStringLiteral("report.v1"), QStringLiteral("a.b")};
    return chooseFile(dialog, m_chance.oneOf(names));
}

} // namespace storm
