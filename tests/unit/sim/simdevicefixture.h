#pragma once

#include "sim/catalogue.h"
#include "sim/device.h"

#include <QObject>

#include <memory>

/// A device without frames and links: payloads in, payloads out.
class SimDeviceFixture : public QObject
{
    Q_OBJECT

protected:
    static QByteArray hex(const char *text) { return QByteArray::fromHex(text); }

    /// Four modules: strain gauge, voltage, thermo, universal; and a power module.
    static sim::Chain smallChain()
    {
        sim::Chain chain;
        chain.controller.identity.serial = QStringLiteral("CT-1");
        chain.power = sim::Power();
        chain.power->identity.serial = QStringLiteral("PW-1");
        for (const quint8 type : {sim::kStrainGauge, sim::kVoltage, sim::kThermo, sim::kUniversal})
            chain.modules.append(sim::Module::ofType(type));
        chain.module(1).identity = {QStringLiteral("SG-0001"), QStringLiteral("2.1"), QStringLiteral("1.4.2"),
                                    QStringLiteral("1.07")};
        return chain;
    }

    static int u16(const QByteArray &bytes, int at)
    {
        return static_cast<quint8>(bytes.at(at)) | static_cast<quint8>(bytes.at(at + 1)) << 8;
    }

    /// The bits of a fast status entry, counted from the least significant bit of its first byte.
    static int fastBits(const QByteArray &reply, int entry, int firstBit, int width)
    {
        int value = 0;
        for (int i = 0; i < width; ++i) {
            const int bit = firstBit + i;
            const int byte = static_cast<quint8>(reply.at(16 + 9 * entry + bit / 8));
            value |= ((byte >> (bit % 8)) & 1) << i;
        }
        return value;
    }

    void describe(const sim::Chain &chain) { m_device = std::make_unique<sim::Device>(chain, 1); }

    /// The reply to a payload, empty if there is none.
    QByteArray ask(const QByteArray &payload, int ms = 0)
    {
        const sim::Answer answer = m_device->answer(payload, sim::Milliseconds(ms));
        return answer.verdict == sim::Answer::Verdict::Reply ? answer.payload : QByteArray();
    }
    QByteArray ask(const char *payload, int ms = 0) { return ask(hex(payload), ms); }
    sim::Channel &channel(int address, int index) { return m_device->chain().module(address).channel(index); }

    std::unique_ptr<sim::Device> m_device;
};
