#pragma once

#include <QIcon>

/// Makes the pictures below ":/pictures/" known. Call it before the first of them is loaded; calling it
/// again does no harm.
void initResources();

/// The program's icon in all its sizes.
QIcon applicationIcon();

/// The same without its large pictures, which take the most time to read.
QIcon smallApplicationIcon();
