#pragma once

#include "firmware/firmwareimage.h"
#include "firmware/firmwareupdate.h"
#include "support/childbyname.h"
#include "systemfixture.h"

#include <QProgressBar>
#include <QPushButton>

/// The program before a simulated chain of two modules, with what a test of the firmware update needs: the
/// flash memories of the chain, and the window as its operator uses it.
class FirmwareFixture : public SystemFixture
{
public:
    explicit FirmwareFixture(LinkKind kind = LinkKind::Tcp);

    /// Plugs the chain, at a pace of its line if that is not 0, and starts the program; returns when the
    /// chain is read. The session waits for replies for a minute. What the chain was asked for is counted
    /// from then on.
    void begin(int bytesPerSecond = 0);

    /// Queues and starts an image without the window.
    void flash(const QByteArray &file, firmwareimage::Target target);

    /// Returns when the device was reset so many times, and the chain was read anew after the last one.
    void waitForTheResetsEnd(int resets);

    /// Returns when the cycle has polled all values a few times.
    void waitForARound();

    /// Lets what an abort left waiting fall to the time-out; returns when the chain is read anew. Ends the
    /// faults, and counts requests from then on.
    void startOver();

    sim::FpgaImages &images() const { return device->device().images(); }
    bool isWhole() const;
    /// Whether no request of the program that begin() started waits for its reply.
    bool isAnswered() const { return m_isAnswered; }
    int fpgaCommands() const { return device->requestCount(0x16); }

    /// The first bytes of all requests.
    QByteArray codesOfRequests() const;

    void openWindow();

    /// Gives the path of a new file with these contents.
    QString write(const char *name, const QByteArray &bytes);

    /// Picks the file in the dialog.
    void choose(const QString &path);
    void click(const char *button);

    /// Presses "Abort", answers the question with "Yes", and looks at what the window shows then.
    void abort();

    FirmwareUpdate *update() const { return window()->firmwareUpdate(); }
    template <typename T>
    T *part(const char *name) const
    {
        return childByName<T>(update(), name);
    }
    QString buttonText() const { return part<QPushButton>("flashButton")->text(); }
    int progress() const { return part<QProgressBar>("progressBar")->value(); }

    /// Text of the status label; empty while it is hidden.
    QString label() const;

private:
    bool m_isAnswered = false;
};
