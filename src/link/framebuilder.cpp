#include "link/framebuilder.h"

#include "base/bytewriter.h"
#include "link/framecrc.h"
#include "link/frameformat.h"

namespace frame {

QByteArray build(quint8 counter, quint8 addressee, const QByteArray &payload)
{
    Q_ASSERT(payload.size() <= kMaxPayload);
    ByteWriter writer;
    for (const quint8 byte : kStart)
        writer.writeU8(byte);
    writer.writeU8(counter).writeU8(addressee).writeU8(kOwnOriginator).writeZeros(kReservedSize);
    writer.writeU16(static_cast<quint16>(payload.size()));
    writer.writeU16(updateSum(kChecksumStart, writer.bytes().constData(), writer.bytes().size()));
    writer.writeBytes(payload);
    writer.writeU16(updateCrc(kChecksumStart, writer.bytes().constData(), writer.bytes().size()));
    return writer.bytes();
}

} // namespace frame
