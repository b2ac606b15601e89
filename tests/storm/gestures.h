#pragma once

#include "chance.h"
#include "dialogbook.h"
#include "link/settings.h"

#include <QString>
#include <optional>

class QAbstractItemView;
class QAbstractSpinBox;
class QComboBox;
class QLineEdit;
class QWidget;

namespace storm {

class Hands;
class Program;

/// What the operator knows to do with the program: each of these hands some acts to the hands.
class Gestures
{
public:
    Gestures(Program &program, Hands &hands, Chance &chance, DialogBook &book);

    // On any control of a window (gestures_controls.cpp).

    /// The controls of the window that can be used now, those of the rows in `rows`.
    struct Controls
    {
        QList<QWidget *> rows;
        QList<QWidget *> others;
    };
    static Controls controlsOf(const QWidget &window);

    /// Does something to the control; returns what, for the report.
    QString use(QWidget *control);
    /// In the list that is open.
    QString usePopup(QWidget *popup);
    /// Some key to the active window.
    QString pressSomeKey();

    // To open the dialogs (gestures_openers.cpp).

    /// Does the next thing that leads from the host to the dialog; an empty text if it cannot be opened from
    /// what is there now.
    QString open(const QString &dialog);

    // In dialogs (gestures_dialogs.cpp).

    /// Does something in a dialog that is not left by that; empty if there is nothing to do.
    QString work(QWidget *dialog);
    /// Begins to leave the dialog so.
    QString leave(QWidget *dialog, Way way);
    /// The same by the button that accepts what is in the dialog now.
    QString leaveAccepting(QWidget *dialog);
    /// Lets the gateway's panel connect, to where the gateway is.
    QString connectPanel(QWidget *panel);
    /// Chooses a link in the connection dialog; a live one on request, and of this type if one is given.
    QString chooseLink(QWidget *portLister, bool live, const std::optional<Comm_Type> &type = {});

    /// The window of this name that is on the screen; null if there is none.
    static QWidget *openWindow(const QString &name);

private:
    QString useList(QComboBox *box);
    QString useSpinBox(QAbstractSpinBox *box);
    QString useField(QLineEdit *field);
    QString useView(QAbstractItemView *view);
    void clickArrow(QAbstractSpinBox *box, bool up, Qt::KeyboardModifiers keys);
    Qt::KeyboardModifiers someModifiers();
    QString textFor(const QLineEdit &field);

    /// A visible control of the main window with this name; chosen by chance if there are several.
    QWidget *inMainWindow(const char *name);
    QWidget *inWindow(QWidget *window, const char *name);
    QString clickIn(QWidget *window, const char *name);
    QString clickInMain(const char *name);
    QString openFromReport(const QString &dialog);
    QString openFromUpdate(const QString &dialog);
    QString openFilterWarning();
    QString openSpecialRange();
    QString workInFileDialog(QWidget *dialog);
    QString chooseFile(QWidget *dialog, const QString &name);
    void pressButton(QWidget *dialog, Way way);
    void pick(QComboBox *box, int index, Qt::KeyboardModifiers keys);
    /// The control comes into view before what follows; the program has to answer for how long that takes.
    void scrollTo(QWidget *control);

    Program &m_program;
    Hands &m_hands;
    Chance &m_chance;
    DialogBook &m_book;
    QString m_wantedImage; ///< to be chosen in the next dialog for firmware files; empty: any
};

} // namespace storm
