#include "reports/reportfile.h"

#include "base/log.h"

#include <QSaveFile>

namespace {

void complain(const QString &path, const QString &reason)
{
    criticalLine("bool saveReport(QString)") << "Report not written to" << path << "-" << reason;
}

} // namespace

bool saveReport(const QString &path, const std::function<bool(QIODevice &)> &write)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly)) {
        complain(path, file.errorString());
        return false;
    }
    if (!write(file)) {
        complain(path, file.error() == QFileDevice::NoError ? QStringLiteral("it could not be made")
                                                            : file.errorString());
        return false; // what was begun goes with the object
    }
    if (!file.commit()) {
        complain(path, file.errorString());
        return false;
    }
    return true;
}
