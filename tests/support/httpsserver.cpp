#include "support/httpsserver.h"

#include <QSslConfiguration>
#include <QSslSocket>
#include <memory>
#include <utility>

namespace {

constexpr char kEndOfHeaders[] = "\r\n\r\n";
constexpr qint64 kEnoughWaiting = 65536; ///< bytes, for an endless answer

QByteArray headersOf(const HttpsAnswer &answer)
{
    QByteArray headers = "HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n" + answer.headers;
    if (answer.manner != HttpsAnswer::Manner::Endless) {
        const int missing = answer.manner == HttpsAnswer::Manner::BrokenOff ? 1 : 0;
        headers += "Content-Length: " + QByteArray::number(answer.contents.size() + missing) + "\r\n";
    }
    return headers + "\r\n";
}

/// Each byte goes out when the one before it has gone.
void writeInPieces(QSslSocket *socket, const QByteArray &bytes)
{
    auto rest = std::make_shared<QByteArray>(bytes);
    const auto writeNext = [socket, rest] {
        if (rest->isEmpty()) {
            socket->disconnectFromHost();
            return;
        }
        socket->write(rest->left(1));
        rest->remove(0, 1);
    };
    QObject::connect(socket, &QSslSocket::encryptedBytesWritten, socket, writeNext, Qt::QueuedConnection);
    writeNext();
}

void writeEndlessly(QSslSocket *socket, const QByteArray &bytes)
{
    const auto writeMore = [socket, bytes] {
        while (socket->encryptedBytesToWrite() < kEnoughWaiting && socket->bytesToWrite() < kEnoughWaiting)
            socket->write(bytes);
    };
    QObject::connect(socket, &QSslSocket::encryptedBytesWritten, socket, writeMore, Qt::QueuedConnection);
    writeMore();
}

} // namespace

HttpsServer::HttpsServer(CertifiedKey identity, QObject *parent)
    : HttpsServer(std::move(identity), QHostAddress::LocalHost, 0)
{
    setParent(parent);
}

HttpsServer::HttpsServer(CertifiedKey identity, const QHostAddress &address, quint16 port)
    : m_identity(std::move(identity))
{
    if (!listen(address, port))
        qFatal("no port for the server: %s", qPrintable(errorString()));
}

void HttpsServer::incomingConnection(qintptr descriptor)
{
    auto *socket = new QSslSocket(this);
    ++m_connections;
    ++m_openConnections;
    connect(socket, &QSslSocket::disconnected, this, [this, socket] {
        --m_openConnections;
        m_received.remove(socket);
        socket->deleteLater();
    });
    socket->setSocketDescriptor(descriptor);
    if (m_isSilent) {
        connect(socket, &QSslSocket::readyRead, this, [this, socket] { m_unanswered += socket->readAll(); });
        return;
    }
    connect(socket, &QSslSocket::readyRead, this, [this, socket] { readRequest(socket); });
    encrypt(socket);
}

void HttpsServer::encrypt(QSslSocket *socket)
{
    QSslConfiguration configuration = socket->sslConfiguration();
    configuration.setLocalCertificate(m_identity.certificate);
    configuration.setPrivateKey(m_identity.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    if (m_protocol) {
        configuration.setProtocol(*m_protocol);
        configuration.setBackendConfigurationOption("CipherString", "DEFAULT:@SECLEVEL=0");
    }
    socket->setSslConfiguration(configuration);
    socket->startServerEncryption();
}

void HttpsServer::readRequest(QSslSocket *socket)
{
    QByteArray &received = m_received[socket];
    received += socket->readAll();
    if (!received.endsWith(kEndOfHeaders))
        return;
    const QByteArray request = std::exchange(received, QByteArray());
    m_requests.append(request);
    const QByteArray path = request.split(' ').value(1);
    static const HttpsAnswer notFound{
        "<html>not here</html>", HttpsAnswer::Manner::Whole, "404 Not Found", {}};
    answer(socket, m_answers.value(path, notFound));
}

void HttpsServer::answer(QSslSocket *socket, const HttpsAnswer &answer)
{
    switch (answer.manner) {
    case HttpsAnswer::Manner::Whole:
    case HttpsAnswer::Manner::BrokenOff:
        socket->write(headersOf(answer) + answer.contents);
        socket->disconnectFromHost(); // after what was written
        break;
    case HttpsAnswer::Manner::InPieces:
        writeInPieces(socket, headersOf(answer) + answer.contents);
        break;
    case HttpsAnswer::Manner::Endless:
        socket->write(headersOf(answer));
        writeEndlessly(socket, answer.contents);
        break;
    case HttpsAnswer::Manner::NoHeadEnd:
        socket->write("HTTP/1.1 " + answer.status);
        writeEndlessly(socket, answer.contents);
        break;
    case HttpsAnswer::Manner::Never:
        break;
    }
}
