#include "protocol/framesplit.h"

#include "base/bytereader.h"
#include "link/frameformat.h"

std::optional<QByteArray> payloadOfFrame(const QByteArray &frame)
{
    ByteReader reader(frame);
    reader.seek(frame::kLengthOffset);
    const int length = reader.readU16();
    reader.seek(frame::kHeaderSize);
    if (frame.size() < frame::kHeaderSize + length + frame::kTrailerSize)
        return std::nullopt;
    return reader.readBytes(length);
}
