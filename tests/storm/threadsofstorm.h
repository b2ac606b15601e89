#pragma once

#include <QtGlobal>

namespace storm {

/// The name of the thread in which the simulated devices live.
constexpr char kThreadOfTheWorld[] = "world";
/// How long the threads that the program has beside that of its window waited so far. For that thread alone.
qint64 helpersWaitedNs();

} // namespace storm
