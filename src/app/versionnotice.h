#pragma once

#include <QString>

/// True if the user is to be told of the version `remote`: if it has another count of numbers than `local`,
/// or a greater number at any position. A smaller number in front does not stop the comparison, so 1.0.99
/// counts as newer than 1.1.62; this is on purpose.
///
/// The numbers of `local` are separated by points, those of `remote` by anything that is no digit. A number
/// too great to be read counts as 0.
bool isNewVersionNoticeDue(const QString &local, const QString &remote);
