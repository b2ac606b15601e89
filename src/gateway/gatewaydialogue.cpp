#include "gateway/gatewaydialogue.h"

#include "base/timesource.h"
#include "gateway/gatewaytexts.h"

#include <utility>

namespace {

/// As much of a received text as an operator could read; the rest is counted.
QString readableText(const QString &text)
{
    constexpr int kMaxLength = 4096;
    if (text.size() <= kMaxLength)
        return text;
    const int left = text.size() - kMaxLength;
    return text.left(kMaxLength) + GatewayDialogue::tr(" [%1 more characters]").arg(left);
}

} // namespace

GatewayDialogue::GatewayDialogue(TimeSource &time, QObject *parent, std::chrono::milliseconds pollPeriod)
    : QObject(parent)
    , m_time(time)
    , m_pollPeriod(pollPeriod)
    , m_pollTimer(time.createTimer(this))
{
    connect(m_pollTimer, &Timer::timeout, this, &GatewayDialogue::requestStatus);
}

void GatewayDialogue::send(const gateway::Command &command)
{
    constexpr int kLineEndSize = 1;
    const QByteArray line = gateway::lineOf(command);
    const QString sent = QString::fromLatin1(line.constData(), line.size() - kLineEndSize);
    switch (command.echo) {
    case gateway::Echo::Line:
        emit textToShow(sent + QLatin1Char('\n'), true);
        break;
    case gateway::Echo::SameLine:
        emit textToShow(sent, false);
        break;
    case gateway::Echo::Nothing:
        break;
    }
    emit lineReady(line);
}

void GatewayDialogue::setSimulation(int index)
{
    m_settings.simulation = QString::number(index);
    send(gateway::simulation(m_settings));
}

void GatewayDialogue::setDataRate(const QString &bitRate, const QString &channelCount)
{
    m_settings.bitRate = bitRate;
    m_settings.channelCount = channelCount;
    send(gateway::dataRate(m_settings));
}

void GatewayDialogue::setMode(int index)
{
    // The entry "OFF" repeats the last mode, on purpose.
    m_settings.gatewayMode = gateway::modeText(index).value_or(m_settings.gatewayMode);
    send(gateway::mode(m_settings));
}

void GatewayDialogue::setEndian(gateway::ByteOrder order)
{
    m_settings.endian = order == gateway::ByteOrder::Little ? QStringLiteral("L") : QStringLiteral("B");
    send(gateway::endian(m_settings));
}

void GatewayDialogue::setDataLength(gateway::SampleWidth width)
{
    m_settings.dataLength =
        width == gateway::SampleWidth::Bits16 ? QStringLiteral("16") : QStringLiteral("18");
    send(gateway::dataLength(m_settings));
}

void GatewayDialogue::setDataFormat(gateway::SampleFormat format)
{
    m_settings.dataFormat =
        format == gateway::SampleFormat::Unsigned ? QStringLiteral("U") : QStringLiteral("2");
    send(gateway::dataFormat(m_settings));
}

void GatewayDialogue::setExternalServer(const QString &address, const QString &port)
{
    m_settings.extAddress = address;
    m_settings.extPort = port;
    send(gateway::externalServer(m_settings));
}

void GatewayDialogue::setActiveCom(int index)
{
    m_settings.activeCom = QString::number(index);
    send(gateway::activeCom(m_settings));
}

void GatewayDialogue::setPtpMode(int index)
{
    m_settings.ptpMode = QString::number(index);
    send(gateway::ptpMode(m_settings));
}

void GatewayDialogue::setDataProtocol(int index)
{
    m_settings.dataProtocol = gateway::dataProtocolTexts().value(index, m_settings.dataProtocol);
    send(gateway::dataProtocol(m_settings));
}

void GatewayDialogue::changeAddress(const QString &address)
{
    m_settings.pendingAddress = address;
    m_awaitsNewAddress = !address.isEmpty();
    send(gateway::changeAddress(m_settings));
}

void GatewayDialogue::setClock()
{
    m_settings.epochTime = gateway::epochText(m_time.now());
    send(gateway::epochTime(m_settings));
}

void GatewayDialogue::takePiece(const QByteArray &piece)
{
    // The size goes along, or a zero byte would end the text.
    const QString text = QString::fromLatin1(piece.constData(), piece.size());
    emit textToShow(readableText(text) + QLatin1Char('\n'), false);
    const gateway::Reply reply = gateway::readReply(text);
    if (reply.isStatus) {
        if (reply.status)
            emit statusRead(*reply.status);
        return;
    }
    // Before the request goes out, which may find the link gone and stop the polling.
    if (!m_pollTimer->isActive())
        m_pollTimer->start(m_pollPeriod);
    if (reply.hasPrompt)
        requestStatus();
    // Once: a gateway that goes on telling of it would be connected again and again.
    if (reply.hasNewAddress && std::exchange(m_awaitsNewAddress, false))
        emit addressChanged(m_settings.pendingAddress);
}

void GatewayDialogue::requestStatus()
{
    send(gateway::statusRequest());
}

void GatewayDialogue::stopPolling()
{
    m_pollTimer->stop();
}
