#include "modules/common/versionbox.h"

#include "base/gui/dialogs.h"

#include <QMessageBox>

namespace {

QString line(const QString &caption, const QString &version)
{
    return caption + QLatin1Char('\t') + version + QLatin1Char('\n');
}

} // namespace

void showVersionBox(QWidget *parent, const QString &hardware, const QString &firmware1,
                    const QString &firmware2)
{
    const QString text =
        QStringLiteral("Component version numbers\n") + line(QStringLiteral("Hardware:"), hardware) +
        line(QStringLiteral("Firmware 1:"), firmware1) + line(QStringLiteral("Firmware 2:"), firmware2);
    auto *box = new QMessageBox(QMessageBox::Information, QStringLiteral("Module Version Info"), text,
                                QMessageBox::Ok, parent);
    box->setObjectName(QStringLiteral("versionBox"));
    // The module's texts are shown as they came.
    box->setTextFormat(Qt::PlainText);
    showModalOnce(*box);
}
