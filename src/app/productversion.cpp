#include "app/productversion.h"

QString productVersion()
{
    return QStringLiteral(VX_PRODUCT_VERSION); // set by the build from the version of the project
}
