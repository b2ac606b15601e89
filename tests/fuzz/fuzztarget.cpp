#include "fuzztarget.h"

#include <QString>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

/// What the offscreen platform has to say of each window that has a least size.
const QLatin1String kAboutThePlatform("This plugin does not support propagateSizeHints()");

/// How the complaints begin that the program writes on purpose.
const char *const kMeantComplaints[] = {
    "An Invalid DataStream was received over : ",
    "Request dropped, its payload is too long for a frame:",
    "void Communication_Aux::RcvTimeOver() :",
};

bool isMeant(const QString &complaint)
{
    return std::any_of(
        std::begin(kMeantComplaints), std::end(kMeantComplaints),
        [&complaint](const char *begin) { return complaint.startsWith(QLatin1String(begin)); });
}

/// The log is not looked at, with two exceptions: Qt warns of what a program should not have done, and the
/// program complains of nothing but what was foreseen.
void takeMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (text == kAboutThePlatform)
        return;
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
        return;
    case QtCriticalMsg:
        if (isMeant(text))
            return;
        break;
    case QtWarningMsg:
    case QtFatalMsg:
        break;
    }
    std::fprintf(stderr, "Unexpected line in the log: %s\n", qUtf8Printable(text));
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
