#pragma once

#include <QObject>

namespace sim {

class Connection;

/// Where peers come from.
class Link : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    /// A peer is there. Connect to it inside the slot: its bytes may come at any time from then on.
    void connected(sim::Connection *connection);
};

} // namespace sim
