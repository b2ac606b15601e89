#pragma once

#include <QByteArray>

namespace fuzz {

/// Takes decisions and data out of the bytes of one input, front to back. Behind the end every number is 0
/// and every text is empty.
class Input
{
public:
    explicit Input(const QByteArray &bytes)
        : m_bytes(bytes)
    {}

    bool atEnd() const { return m_position >= m_bytes.size(); }

    quint8 u8() { return atEnd() ? quint8(0) : static_cast<quint8>(m_bytes.at(m_position++)); }

    /// Little-endian.
    quint16 u16()
    {
        const quint8 low = u8();
        return static_cast<quint16>(low | u8() << 8);
    }

    bool flag() { return (u8() & 1U) != 0; }

    /// One of the enumerators of an enumeration that ends with Count.
    template <typename Choice>
    Choice choice()
    {
        return static_cast<Choice>(u8() % static_cast<quint8>(Choice::Count));
    }

    /// `count` bytes, fewer at the end.
    QByteArray bytes(int count)
    {
        const QByteArray taken = atEnd() ? QByteArray() : m_bytes.mid(m_position, count);
        m_position += taken.size();
        return taken;
    }

    /// As many bytes as the number in front of them says, which has one byte or two.
    QByteArray shortBlock() { return bytes(u8()); }
    QByteArray longBlock() { return bytes(u16()); }

    QByteArray rest() { return bytes(m_bytes.size()); }

private:
    QByteArray m_bytes;
    int m_position = 0;
};

/// Writes what an Input reads: for the first inputs, those that are no guess.
class Output
{
public:
    Output &u8(int value)
    {
        m_bytes.append(static_cast<char>(value));
        return *this;
    }

    Output &u16(int value) { return u8(value & 0xFF).u8(value >> 8); }

    template <typename Choice>
    Output &choice(Choice choice)
    {
        return u8(static_cast<int>(choice));
    }

    Output &bytes(const QByteArray &bytes)
    {
        m_bytes.append(bytes);
        return *this;
    }

    Output &shortBlock(const QByteArray &block) { return u8(block.size()).bytes(block); }
    Output &longBlock(const QByteArray &block) { return u16(block.size()).bytes(block); }

    const QByteArray &taken() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

} // namespace fuzz
