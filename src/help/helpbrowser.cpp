#include "help/helpbrowser.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QHelpEngine>
#include <QUrl>

namespace {

bool isManual(const QUrl &url)
{
    return url.scheme() == QLatin1String("qthelp");
}

bool isForTheSystem(const QUrl &url)
{
    const QString scheme = url.scheme();
    return scheme == QLatin1String("http") || scheme == QLatin1String("https") ||
           scheme == QLatin1String("mailto");
}

} // namespace

HelpBrowser::HelpBrowser(QHelpEngine &engine, QWidget *parent)
    : QTextBrowser(parent)
    , m_engine(&engine)
{}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    if (isManual(name))
        return manualData(name);
    return QTextBrowser::loadResource(type, name);
}

void HelpBrowser::setSource(const QUrl &name)
{
    if (isForTheSystem(name)) {
        QDesktopServices::openUrl(name);
        return;
    }
    // The base class would show files of the machine too, and warn of a page that it cannot load.
    if (isManual(name) && !manualData(name).isEmpty())
        QTextBrowser::setSource(name);
}

QByteArray HelpBrowser::manualData(const QUrl &name) const
{
    // An engine that is asked without a collection file makes one.
    if (!QFileInfo(m_engine->collectionFile()).isFile())
        return {};
    return m_engine->fileData(name);
}
