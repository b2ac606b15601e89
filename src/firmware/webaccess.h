#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <functional>

/// The way to the web for requests that follow each other: a network access for each of them. One that served
/// many would keep what it learned from the server of each encryption, for hours.
class WebAccess : public QObject
{
    Q_OBJECT

public:
    using Factory = std::function<QNetworkAccessManager *()>;

    /// `make` makes the network accesses, which this object takes.
    explicit WebAccess(QObject *parent = nullptr, Factory make = direct);

    /// The present access; it belongs to this object.
    QNetworkAccessManager &network();

    /// Leaves the present access with the connections that it has; network() makes another one from now on.
    /// What is left goes in a later turn of the event loop with the replies that are still there. Not within
    /// this call, and not the connections alone: their thread may be telling a reply of the encryption, waits
    /// until that is heard, and is waited for when it is to end.
    void renew();

private:
    /// An access that uses no proxy: one found in the system's settings would have its name looked up by
    /// means that may delay the end.
    static QNetworkAccessManager *direct();

    const Factory m_make;
    QNetworkAccessManager *m_network = nullptr; // child; null while none is needed
};
