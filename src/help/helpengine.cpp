#include "help/helpengine.h"

HelpEngine::HelpEngine(const QString &, QWidget *parent)
    : QWidget(parent)
{}

HelpEngine::~HelpEngine() = default;

QString helpCollectionFile(const QString &applicationFolder)
{
    return applicationFolder + QStringLiteral("/documentation/vxconfighelp.qhc");
}
