#include "app/warningbox.h"

#include "base/gui/dialogs.h"

#include <QEvent>

namespace {

constexpr QSize kBoxSize(500, 200);

} // namespace

WarningBox::WarningBox(QWidget *parent)
    : QMessageBox(parent)
{
    setObjectName(QStringLiteral("warningBox"));
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard); // addresses are copied
}

void WarningBox::showWarning(const QString &text)
{
    setWindowTitle(tr("Warning"));
    setWindowFlags(dialogFlags());
    setModal(false);
    setIcon(QMessageBox::Warning);
    setText(text);
    setFixedSize(kBoxSize);
    show();
}

bool WarningBox::event(QEvent *event)
{
    const bool result = QMessageBox::event(event);
    // The base class has just fixed a size of its own choice.
    if (event->type() == QEvent::Show || event->type() == QEvent::LayoutRequest)
        setFixedSize(kBoxSize);
    return result;
}
