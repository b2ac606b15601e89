#include "base/gui/confirmation.h"

#include "base/gui/dialogs.h"
#include "base/gui/heldkeys.h"

#include <QPushButton>
#include <algorithm>

namespace {

bool isOpen(const QString &name, const QWidget &parent)
{
    const auto boxes = parent.findChildren<QMessageBox *>(name); // one that was left may still be there
    return std::any_of(boxes.begin(), boxes.end(), [](const QMessageBox *box) { return box->isVisible(); });
}

/// An empty text leaves the usual one.
void label(QAbstractButton &button, const QString &name, const QString &text)
{
    if (!text.isEmpty())
        button.setText(text);
    button.setObjectName(name);
    button.setAccessibleName(button.text().remove(QLatin1Char('&')));
}

} // namespace

void confirm(const Confirmation &confirmation, QWidget &parent, const std::function<void()> &proceed)
{
    if (isOpen(confirmation.name, parent))
        return;
    auto *box = new QMessageBox(QMessageBox::Warning, confirmation.title, confirmation.question,
                                QMessageBox::Yes | confirmation.refusal, &parent);
    box->setWindowFlags(dialogFlags()); // a message box would add some of its own
    box->setObjectName(confirmation.name);
    box->setTextFormat(Qt::PlainText);
    label(*box->button(QMessageBox::Yes), QStringLiteral("proceedButton"), confirmation.proceedText);
    label(*box->button(confirmation.refusal), QStringLiteral("refusalButton"), confirmation.refusalText);
    box->setDefaultButton(confirmation.refusal);
    box->setEscapeButton(confirmation.refusal);
    ignoreHeldKeys(*box);
    QObject::connect(box, &QDialog::finished, &parent, [box, proceed] {
        if (box->clickedButton() == box->button(QMessageBox::Yes))
            proceed();
    });
    showModalOnce(*box);
}
