#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <algorithm>

/// A reply that is told what to be. Its abort ends it at once, as that of a real one does.
class FakeReply final : public QNetworkReply
{
public:
    explicit FakeReply(const QByteArray &contents = {}, QObject *parent = nullptr)
        : QNetworkReply(parent)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        m_contents = contents;
    }

    void setFailed(NetworkError error, const QString &text) { setError(error, text); }

    void encrypt() { emit encrypted(); }
    void receiveHead() { emit metaDataChanged(); }

    void receive(const QByteArray &bytes)
    {
        m_contents += bytes;
        emit readyRead();
    }

    void end()
    {
        setFinished(true);
        emit finished();
    }

    void abort() override
    {
        setError(OperationCanceledError, QStringLiteral("aborted"));
        end();
    }

    qint64 bytesAvailable() const override { return QNetworkReply::bytesAvailable() + m_contents.size(); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        const qint64 count = qMin<qint64>(maximum, m_contents.size());
        std::copy_n(m_contents.constData(), count, data);
        m_contents.remove(0, int(count));
        return count;
    }

private:
    QByteArray m_contents;
};
