#pragma once

#include <QString>

class QObject;

/// Shows a text file to the user in the platform's editor, without waiting for it. What belongs to the
/// started editor becomes a child of `owner`. A failure is told in the log.
void showTextFile(const QString &path, QObject *owner);
