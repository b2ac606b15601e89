#include "app/resources.h"

#include <QDir>
#include <initializer_list>

void initResources()
{
    Q_INIT_RESOURCE(resources); // needed since the pictures are part of a static library
}

namespace {

QIcon iconOf(const std::initializer_list<int> &sizes)
{
    initResources();
    QIcon icon;
    for (const int size : sizes)
        icon.addFile(QStringLiteral(":/pictures/vxconfig_%1.png").arg(size), QSize(size, size));
    return icon;
}

} // namespace

QIcon applicationIcon()
{
    return iconOf({16, 32, 48, 64, 128, 256});
}

QIcon smallApplicationIcon()
{
    return iconOf({16, 32, 48});
}
