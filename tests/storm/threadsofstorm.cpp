#include "threadsofstorm.h"

#include "support/kernelclocks.h"

namespace storm {

qint64 helpersWaitedNs()
{
    static kernelclocks::ThreadWaits waits(kThreadOfTheWorld);
    return waits.total();
}

} // namespace storm
