#include "app/resources.h"

#include <QDir>

void initResources()
{
    Q_INIT_RESOURCE(resources); // needed since the pictures are part of a static library
}

QIcon applicationIcon()
{
    initResources();
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/pictures/vxconfig_%1.png").arg(size), QSize(size, size));
    return icon;
}
