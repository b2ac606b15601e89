#include "fuzztarget.h"

#include <QString>
#include <cstdio>
#include <cstdlib>

namespace {

/// What the offscreen platform has to say of each window that has a least size.
const QLatin1String kAboutThePlatform("This plugin does not support propagateSizeHints()");

/// The log is not looked at, with one exception: Qt warns of what a program should not have done.
void takeMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (text == kAboutThePlatform)
        return;
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
    case QtCriticalMsg:
        return;
    case QtWarningMsg:
    case QtFatalMsg:
        break;
    }
    std::fprintf(stderr, "Unexpected warning: %s\n", qUtf8Printable(text));
    std::abort();
}

} // namespace

void fuzz::require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

// The names that libFuzzer calls.

extern "C" int LLVMFuzzerInitialize(int *, char ***argv)
{
    static int argc = 1; // the other arguments are not for Qt
    qInstallMessageHandler(takeMessage);
    fuzz::begin(argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    // Without a copy: one would hide a read behind the end.
    fuzz::tryInput(QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    return 0;
}
