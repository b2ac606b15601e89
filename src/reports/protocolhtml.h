#pragma once

#include <QString>

struct ReportHead;
struct StatusStore;

/// The test protocol of one module as HTML. A module of which nothing is known shows empty values.
QString protocolHtml(const StatusStore &store, int address, const ReportHead &head);
