#pragma once

#include <QByteArray>

namespace frame {

/// The whole frame around `payload`, which holds at most kMaxPayload bytes.
QByteArray build(quint8 counter, quint8 addressee, const QByteArray &payload);

} // namespace frame
