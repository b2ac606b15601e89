#pragma once

#include <QHostAddress>
#include <QHostInfo>
#include <QList>
#include <chrono>
#include <functional>

/// The addresses that `host` means: the text itself if it is an address, otherwise what the look-up of the
/// name finds. None if the name is unknown or the look-up takes longer than `limit`; it then ends unheard
/// on a thread of its own, which nothing waits for.
QList<QHostAddress>
addressesWithin(std::chrono::milliseconds limit, const QString &host,
                const std::function<QHostInfo(const QString &)> &lookUp = &QHostInfo::fromName);
