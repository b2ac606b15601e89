#include "base/gui/dialogs.h"

#include <QDialog>

void showModal(QDialog &dialog)
{
    dialog.setModal(true);
    dialog.show();
}

void showModalOnce(QDialog &dialog)
{
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    showModal(dialog);
}
