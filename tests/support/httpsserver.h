#pragma once

#include "support/testcertificates.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMetaType>
#include <QSsl>
#include <QTcpServer>
#include <optional>

class QSslSocket;

/// What the server does with a request.
struct HttpsAnswer
{
    enum class Manner {
        Whole,
        InPieces,  ///< byte for byte
        BrokenOff, ///< announces one byte more than it sends, and closes
        Endless,   ///< repeats the contents as long as they are read
        NoHeadEnd, ///< repeats the contents behind the status, without a line end of its own
        Never
    };

    QByteArray contents = {};
    Manner manner = Manner::Whole;
    QByteArray status = "200 OK";
    QByteArray headers = {}; ///< further ones, each with its line end
};

Q_DECLARE_METATYPE(HttpsAnswer::Manner)

/// A small HTTPS server on loopback, in the thread that makes it. Each connection takes one request. A path
/// without an answer is not found.
class HttpsServer : public QTcpServer
{
    Q_OBJECT

public:
    /// Listens on a free port of 127.0.0.1.
    explicit HttpsServer(CertifiedKey identity, QObject *parent = nullptr);

    /// Listens at another address of loopback.
    HttpsServer(CertifiedKey identity, const QHostAddress &address, quint16 port);

    void setAnswer(const QByteArray &path, const HttpsAnswer &answer) { m_answers[path] = answer; }

    /// While it is silent, connections are accepted, and nothing is said in them.
    void setSilent(bool isSilent) { m_isSilent = isSilent; }

    /// Offers only this version of the encryption, even one that the system counts as too old.
    void setProtocol(QSsl::SslProtocol protocol) { m_protocol = protocol; }

    /// The requests that came, each with its headers.
    QList<QByteArray> requests() const { return m_requests; }

    /// The connections that came, and those of them that are not closed.
    int connections() const { return m_connections; }
    int openConnections() const { return m_openConnections; }

    /// What was said to a silent server.
    QByteArray unanswered() const { return m_unanswered; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    void encrypt(QSslSocket *socket);
    void readRequest(QSslSocket *socket);
    void answer(QSslSocket *socket, const HttpsAnswer &answer);

    const CertifiedKey m_identity;
    QHash<QByteArray, HttpsAnswer> m_answers;
    QHash<QSslSocket *, QByteArray> m_received;
    QList<QByteArray> m_requests;
    QByteArray m_unanswered;
    int m_connections = 0;
    int m_openConnections = 0;
    bool m_isSilent = false;
    std::optional<QSsl::SslProtocol> m_protocol;
};
