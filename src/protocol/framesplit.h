#pragma once

#include <QByteArray>
#include <optional>

/// The payload of a whole frame; the values of its header are dropped. Nothing if the frame ends before
/// its header, payload and trailer do.
std::optional<QByteArray> payloadOfFrame(const QByteArray &frame);
