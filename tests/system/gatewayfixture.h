#pragma once

#include "channelfixture.h"
#include "sim/gatewayserver.h"

#include <memory>

/// The program before a simulated chain and a simulated gateway, over real sockets.
class GatewayFixture : public ChannelFixture
{
public:
    GatewayFixture();

    std::unique_ptr<sim::GatewayServer> gateway; ///< null: nobody is there

    /// Makes a gateway answer, on the port that the first one chose.
    void plugGateway(const sim::GatewayState &state = {});
    void unplugGateway() { gateway.reset(); }
    void addGatewayFaults(const QString &rules);

    /// Plugs the chain, and the gateway unless one was plugged, whose port the settings file names, and
    /// starts the program; as ChannelFixture::startChain().
    void startWithGateway(const QString &chain = QStringLiteral("module type=1\n"));

    /// Clicks the button of the system panel; returns when the panel is on the screen.
    void openPanel();

    /// openPanel(), and waits until it shows what the gateway has.
    void openConnectedPanel();

    /// Null while it is not on the screen.
    QWidget *panel() const { return openDialog("gateway"); }

    /// A control of the panel itself, not of its dialogs; also while the panel is hidden.
    template <typename T>
    T *part(const char *name) const
    {
        return static_cast<T *>(findPart(name, &T::staticMetaObject));
    }
    QString partText(const char *name) const;
    void clickPart(const char *name) const;
    QPushButton *cell(const QString &name) const { return part<QPushButton>(name.toLatin1()); }

    /// Clicks a button of the box `dialog` that is on the screen.
    void answerDialog(const char *dialog, const QString &button) const;
    /// Types a text over that of a line edit of the box `dialog`.
    void typeInto(const char *dialog, const char *edit, const QString &text) const;

    bool isConnected() const { return partText("tcpConnect_Btn") == QStringLiteral("Disconnect"); }
    /// Colour of a lamp of the panel.
    QColor lampColour(const char *name) const;
    /// Name of the marked cell of the panel's table; empty: none is.
    QString markedCell() const;

    /// What the panel shows and the gateway does not have, as in "comboMode: 0, not 1".
    QStringList differences() const;

    /// The lines that the gateway got, without "#?" and the setting of its clock.
    QStringList lines() const;
    int statusRequests() const { return gateway->lineCount("#?"); }
    int clockSettings() const;

    /// Waits until a connection is polled: the clock was set so many times, and the last request answered.
    void waitUntilPolled(int clockSettings);

    /// A second or more passes, in which the gateway is asked for its status once; returns when it has
    /// answered. No other request is on its way.
    void nextPoll(std::chrono::milliseconds by = std::chrono::seconds(1));

private:
    QWidget *panelOrHidden() const;
    QString dialogue() const;
    QWidget *findPart(const char *name, const QMetaObject *type) const;

    quint16 m_gatewayPort = 0;
};
