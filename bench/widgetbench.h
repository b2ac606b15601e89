#pragma once

#include "base/gui/fonts.h"

#include <QApplication>
#include <QLoggingCategory>

/// Runs `measure` in an application that looks like the product and writes no debug lines.
inline int runWidgetBench(int argc, char *argv[], void (*measure)())
{
    fonts::installSubstitutions();
    QApplication application(argc, argv);
    QApplication::setFont(fonts::text());
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    measure();
    return 0;
}
