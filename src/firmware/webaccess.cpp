#include "firmware/webaccess.h"

#include <QNetworkProxy>
#include <utility>

WebAccess::WebAccess(QObject *parent, Factory make)
    : QObject(parent)
    , m_make(std::move(make))
{}

QNetworkAccessManager *WebAccess::direct()
{
    auto *network = new QNetworkAccessManager;
    network->setProxy(QNetworkProxy::NoProxy);
    return network;
}

QNetworkAccessManager &WebAccess::network()
{
    if (!m_network) {
        m_network = m_make();
        m_network->setParent(this);
    }
    return *m_network;
}

void WebAccess::renew()
{
    if (m_network)
        std::exchange(m_network, nullptr)->deleteLater();
}
