#pragma once

#include "reports/reporthead.h"

struct StatusStore;

/// The overview of the system as HTML: a head and a table with one row for the controller, the power module
/// if it is present, and each analog module, as far as they were chosen.
QString overviewHtml(const StatusStore &store, const ModuleFilter &isChosen, const ReportHead &head);
