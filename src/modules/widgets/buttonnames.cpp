#include "modules/widgets/buttonnames.h"

#include <QDialogButtonBox>
#include <QPushButton>

void nameButtons(const QDialogButtonBox &box)
{
    const auto name = [&box](QDialogButtonBox::StandardButton which, const QString &object,
                             const QString &spoken) {
        QPushButton *button = box.button(which);
        button->setObjectName(object);
        button->setAccessibleName(spoken);
    };
    name(QDialogButtonBox::Ok, QStringLiteral("okButton"), QDialogButtonBox::tr("Ok"));
    name(QDialogButtonBox::Cancel, QStringLiteral("cancelButton"), QDialogButtonBox::tr("Cancel"));
}
