#pragma once

#include <QString>

/// The program's own version, "1.1.62".
QString productVersion();
