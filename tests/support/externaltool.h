#pragma once

#include <QByteArray>
#include <QStringList>

/// Runs a program to its end and returns what it printed. A program that is missing or ends with an error is
/// a failed test, and the result is empty.
QByteArray outputOf(const QString &program, const QStringList &arguments);
