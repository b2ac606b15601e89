#include "modules/widgets/fixedplaces.h"

void FixedPlaces::addItem(QLayoutItem *item)
{
    delete item;
}

int FixedPlaces::count() const
{
    return 0;
}

QLayoutItem *FixedPlaces::itemAt(int) const
{
    return nullptr;
}

QLayoutItem *FixedPlaces::takeAt(int)
{
    return nullptr;
}

QSize FixedPlaces::sizeHint() const
{
    return {};
}

void FixedPlaces::invalidate() {}
