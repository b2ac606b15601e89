// The reader of what the gateway sends, and the gateway's panel over a scripted link: whatever is received
// and set, the panel shows what a status line says, sends whole lines only, and stays bounded.

#include "fuzzinput.h"
#include "fuzztarget.h"
#include "gateway/dialogueview.h"
#include "gateway/gatewaystatus.h"
#include "gateway/gatewayzrt.h"
#include "gatewayinput.h"
#include "support/fakelinks.h"
#include "support/virtualtime.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <cmath>
#include <cstdlib>

using fuzz::require;
using gateway::Status;

namespace {

const char kLine[] = "#S;;1.07;2;;3;2500;16;TCP-C;L;18;192.168.0.22;5675;2s;;;;123;41.5;33.25;;;;;;;;;60000;"
                     "1772440200;;2;1;2;SLAVE;-17;10;700;IENA-1\r\n";

const char kRequest[] = "#?\r";
constexpr int kPollMs = 1000;

/// The texts of a line that are shown as they come: where they stand, what they are read into, and which
/// field of the panel shows them.
struct ShownText
{
    int field;
    QString Status::*member;
    const char *widget;
};

constexpr ShownText kShownTexts[] = {
    {2, &Status::version, "GtwVersion"},         {11, &Status::extAddress, "extIpAddr"},
    {12, &Status::extPort, "extPort"},           {18, &Status::coreTemperature, "CoreTempBox"},
    {19, &Status::pcbTemperature, "PCBTempBox"}, {29, &Status::unixTime, "unixEpochField"},
    {34, &Status::ptpState, "PTPStateLineEdit"}, {35, &Status::ptpAccuracy, "accuracyPTP"},
    {36, &Status::minimumSamples, "minBox"},     {37, &Status::maximumSamples, "maxBox"},
};

/// The fields of the status line in a piece; the line ends at its line end.
QList<QByteArray> fieldsOf(const QByteArray &piece, int tag)
{
    int end = tag;
    while (end < piece.size() && piece.at(end) != '\r' && piece.at(end) != '\n')
        ++end;
    QList<QByteArray> fields = piece.left(end).split(';');
    while (fields.size() < gatewayinput::kFields)
        fields.append(QByteArray());
    return fields;
}

QString latin1(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size()); // zero bytes included
}

/// What makes a status line valid: a decimal number, with nothing but blanks around it.
bool isAboveOne(const QByteArray &guard)
{
    static const QRegularExpression number(QStringLiteral(
        "\\A[\\t-\\r \\x85\\xA0]*([+-]?(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE][+-]?[0-9]+)?)[\\t-\\r "
        "\\x85\\xA0]*\\z"));
    const QRegularExpressionMatch match = number.match(latin1(guard));
    if (!match.hasMatch())
        return false;
    const double value = std::strtod(match.captured(1).toLatin1().constData(), nullptr);
    return std::isfinite(value) && value > 1;
}

/// What is read from the piece, which must be what stands in it.
gateway::Reply checkedReply(const QByteArray &piece)
{
    const gateway::Reply reply = gateway::readReply(latin1(piece));
    const int tag = piece.indexOf("#S");
    require(reply.isStatus == (tag >= 0), "a status line has its tag");
    require(reply.isStatus || !reply.status, "only a status line has a status");
    require(reply.hasPrompt == (tag < 0 && piece.contains("]----")), "a prompt is seen");
    require(reply.hasNewAddress == (tag < 0 && piece.contains("[NEW IP ADDRESS")), "a new address is seen");
    if (!reply.isStatus)
        return reply;
    const QList<QByteArray> fields = fieldsOf(piece, tag);
    require(reply.status.has_value() == isAboveOne(fields.at(3)), "a line is valid if its guard is above 1");
    if (!reply.status)
        return reply;
    const Status &status = *reply.status;
    for (const ShownText &shown : kShownTexts)
        require(status.*shown.member == latin1(fields.at(shown.field)), "a text is read");
    require(status.bitRate == latin1(fields.at(6)), "the bit rate is read");
    require(status.channelCount == latin1(fields.at(7)), "the number of channels is read");
    require(status.serialNumber.endsWith(latin1(fields.at(17))), "the serial number is read");
    require(status.serialNumber.size() >= 6, "the serial number is filled up");
    require(!status.mode || (*status.mode >= 0 && *status.mode <= 5), "the mode is one of the list");
    require(status.ptpMode >= 0 && status.ptpMode <= 2, "the PTP mode is one of the list");
    return reply;
}

/// The panel, which is kept from input to input: making one takes longer than trying many inputs.
class Panel
{
public:
    Panel()
    {
        auto socket = std::make_unique<FakeTcpSock>(m_time);
        m_sock = socket.get();
        m_panel = std::make_unique<GatewayZRT>(m_time, std::make_unique<TcpComm>(m_time, std::move(socket)));
        m_view = child<DialogueView>("RxBox");
        for (const ShownText &shown : kShownTexts)
            m_texts.append(child<QLineEdit>(shown.widget));
        m_serialNumber = child<QLineEdit>("SerialNo");
        for (const char *name :
             {"comboMode", "comboSimultn", "comboActivCOM", "comboPTP", "comboBoxDataPtcl"})
            m_lists.append(child<QComboBox>(name));
        finish();
    }

    void take(fuzz::Input &input);

    /// Whatever happened, a new connection is asked for its status, and shows what it says. Leaves the
    /// connection.
    void finish()
    {
        m_sock->connects = true;
        if (m_sock->IsConnected())
            m_panel->disconnctTCP();
        m_panel->Slot_tcpDisconnected();
        m_panel->Slot_loadTcpAddr(QStringLiteral("10.0.0.1"), QStringLiteral("23"));
        changeAddress(QString());
        checkLines();
        m_panel->connectToTcp();
        require(m_sock->IsConnected(), "the panel connects");
        require(m_sock->frames.size() == 1 && isClock(m_sock->frames.first()), "and sets the clock");
        takePiece("gateway]----");
        m_sock->frames.clear();
        m_time.advance(kPollMs);
        require(m_sock->frames == QByteArrayList{kRequest}, "the status is asked for once a second");
        takePiece(kLine);
        checkSoundLine();
        require(child<QLineEdit>("ipAddrBox")->text() == QLatin1String("10.0.0.1"), "the address is shown");
        m_panel->disconnctTCP();
        m_panel->Slot_tcpDisconnected();
        m_time.turn();
        m_view->clear();
        m_sock->frames.clear();
        m_sock->calls.clear();
    }

private:
    template <typename T>
    T *child(const char *name) const
    {
        const auto all = m_panel->findChildren<T *>(QString::fromLatin1(name));
        for (T *widget : all) {
            if (widget->window() == m_panel.get()) // its dialogs have widgets of the same names
                return widget;
        }
        qFatal("No widget is named %s", name);
    }

    static bool isClock(const QByteArray &line)
    {
        return line.startsWith("#030_") && line.endsWith("000000\r");
    }

    /// A new address is followed once, when the gateway tells that it took it.
    void changeAddress(const QString &address)
    {
        m_pendingAddress = address;
        m_panel->changeGatewayAddr(address);
    }

    void takePiece(QByteArray piece);
    void checkAnswer(const gateway::Reply &reply, bool wasConnected);
    void checkSoundLine() const;
    void checkShown(const Status &status) const;
    void checkLines();
    void operate(fuzz::Input &input);

    VirtualTime m_time;
    QString m_pendingAddress; ///< empty if none is waited for
    FakeTcpSock *m_sock;      // of the panel
    std::unique_ptr<GatewayZRT> m_panel;
    DialogueView *m_view; // these are children of the panel
    QList<QLineEdit *> m_texts;
    QLineEdit *m_serialNumber;
    QList<QComboBox *> m_lists;
};

void Panel::takePiece(QByteArray piece)
{
    checkLines();
    const gateway::Reply reply = checkedReply(piece);
    const bool isConnected = m_sock->IsConnected();
    emit m_sock->messagePacket(piece);
    checkAnswer(reply, isConnected);
    if (isConnected && reply.status)
        checkShown(*reply.status);
    require(m_view->document()->characterCount() <= DialogueView::kCharacters, "the dialogue is bounded");
    require(m_view->document()->blockCount() <= DialogueView::kLines, "its lines are bounded");
}

/// A prompt is answered by a request, a new address by a connection to it, which begins with its clock.
void Panel::checkAnswer(const gateway::Reply &reply, bool wasConnected)
{
    const bool asks = wasConnected && reply.hasPrompt;
    const bool follows = wasConnected && reply.hasNewAddress && !m_pendingAddress.isEmpty();
    const bool setsClock = follows && m_sock->connects;
    const QByteArrayList &lines = m_sock->frames;
    require(lines.size() == int(asks) + int(setsClock), "each piece has its answer");
    require(!asks || lines.first() == kRequest, "a prompt is answered by a request");
    require(!setsClock || isClock(lines.last()), "a new connection begins with its clock");
    require(m_sock->calls.count(QStringLiteral("connect")) == int(follows), "a new address is followed once");
    require(!follows || m_sock->address == m_pendingAddress, "it is the one that was asked for");
    if (follows)
        m_pendingAddress.clear();
}

/// What the panel shows behind kLine, read in it by eye.
void Panel::checkSoundLine() const
{
    const char *const texts[] = {"1.07",       "192.168.0.22", "5675", "41.5", "33.25",
                                 "1772440200", "SLAVE",        "-17",  "10",   "700"};
    for (int i = 0; i < m_texts.size(); ++i)
        require(m_texts.at(i)->text() == QLatin1String(texts[i]), "a text of the sound line is shown");
    require(m_serialNumber->text() == QLatin1String("000123"), "its serial number is shown");
    const int choices[] = {4, 3, 2, 2, 1};
    for (int i = 0; i < m_lists.size(); ++i)
        require(m_lists.at(i)->currentIndex() == choices[i], "a choice of the sound line is shown");
}

void Panel::checkShown(const Status &status) const
{
    for (int i = 0; i < m_texts.size(); ++i)
        require(m_texts.at(i)->text() == status.*kShownTexts[i].member, "a text is shown");
    require(m_serialNumber->text() == status.serialNumber, "the serial number is shown");
    const int reported[] = {status.mode.value_or(m_lists.at(0)->currentIndex()), status.simulation,
                            status.activeCom, status.ptpMode,
                            status.dataProtocol.value_or(m_lists.at(4)->currentIndex())};
    for (int i = 0; i < m_lists.size(); ++i) {
        const bool isInside = reported[i] >= 0 && reported[i] < m_lists.at(i)->count();
        require(m_lists.at(i)->currentIndex() == (isInside ? reported[i] : -1), "a choice is shown");
    }
}

/// Looks at all that was sent since the last call.
void Panel::checkLines()
{
    for (const QByteArray &line : qAsConst(m_sock->frames)) {
        require(line.endsWith('\r'), "a line is closed");
        require(line.indexOf('\r') == line.size() - 1 && !line.contains('\n'), "a command is one line");
    }
    m_sock->frames.clear();
    m_sock->calls.clear();
}

void Panel::operate(fuzz::Input &input)
{
    const int what = input.u8() % 11;
    const QByteArray first = input.shortBlock();
    const QByteArray second = input.shortBlock();
    const QString text = QString::fromUtf8(first);
    const QString other = QString::fromUtf8(second);
    const int number = first.size() - 1;
    switch (what) {
    case 0:
        m_panel->Slot_setBitRateSettings(text, other);
        break;
    case 1:
        m_panel->modeComboBox(number);
        break;
    case 2:
        m_panel->simComboBox(number);
        break;
    case 3:
        m_panel->Slot_PTPControl(number);
        break;
    case 4:
        m_panel->Slot_DataPtclChanged(number);
        break;
    case 5:
        m_panel->Slot_indexActivCom(number);
        break;
    case 6:
        m_panel->Slot_ServDetails(text, other);
        break;
    case 7:
        changeAddress(text);
        break;
    case 8:
        m_panel->Slot_DispatchMinMax({text, other});
        break;
    case 9:
        m_panel->Slot_loadTcpAddr(text, other);
        break;
    default:
        m_panel->handleTcpConnect();
        break;
    }
}

QByteArray statusLine(fuzz::Input &input)
{
    QList<QByteArray> fields = QByteArray(kLine).trimmed().split(';');
    for (int count = input.u8() % 8; count > 0; --count) {
        const int number = input.u8() % gatewayinput::kFields;
        fields[number] = input.shortBlock();
    }
    return fields.join(';');
}

void Panel::take(fuzz::Input &input)
{
    using gatewayinput::Step;
    switch (input.choice<Step>()) {
    case Step::Piece:
        takePiece(input.longBlock());
        break;
    case Step::Fields:
        takePiece(statusLine(input));
        break;
    case Step::Wait:
        m_time.advance(input.u16() % (gatewayinput::kLongestWait + 1));
        break;
    case Step::Connect:
        m_sock->connects = input.flag();
        m_panel->connectToTcp();
        break;
    case Step::Drop:
        m_sock->drop();
        break;
    case Step::Operate:
        operate(input);
        break;
    case Step::Count:
        break;
    }
    checkLines();
}

Panel *panel = nullptr; // lives until the process ends

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QApplication(argc, argv);
    panel = new Panel;
}

void fuzz::tryInput(const QByteArray &bytes)
{
    Input input(bytes);
    while (!input.atEnd())
        panel->take(input);
    panel->finish();
}
