// What modules report of themselves: lists, indices, texts and live values. Each row shows what its module
// said last, and a report of it can be written.

#include "fuzzinput.h"
#include "fuzztarget.h"
#include "listsinput.h"
#include "protocol/records/devicecodes.h"
#include "protocol/records/moduletypes.h"
#include "reports/channelsettings.h"
#include "reports/moduleline.h"
#include "reports/overviewhtml.h"
#include "reports/protocolhtml.h"
#include "reports/reporthead.h"
#include "reports/statusstore.h"
#include "sim/payloadlayout.h"
#include "unit/modules/familymodule.h"

#include <QApplication>
#include <QRegularExpression>

using fuzz::require;

namespace {

constexpr int kNumber = 3;       ///< of the module whose row it is
constexpr int kPendingMs = 1000; ///< how long a change of the operator stands
constexpr int kUnknownType = 77;

void put(QByteArray &payload, int at, int width, const QByteArray &text)
{
    payload.replace(at, width, text.leftJustified(width, '\0', true));
}

/// The items in a list text, each closed by "$"; what follows the last one is none.
QStringList itemsOf(const QString &text)
{
    QStringList items;
    QString item;
    for (const QChar character : text) {
        if (character != QLatin1Char('$')) {
            item.append(character);
            continue;
        }
        items.append(item);
        item.clear();
    }
    return items;
}

/// The list text of one channel: a universal module may join those of both.
QString textOf(Channel channel, const QString &text, bool isUniversal)
{
    if (!isUniversal || text.count(QLatin1Char('#')) != 1)
        return text;
    const int cut = text.indexOf(QLatin1Char('#'));
    return channel == Channel::A ? text.left(cut) : text.mid(cut + 1);
}

/// The filter that a text tells: a whole number, or else 0.
qint64 filterOf(const QString &text)
{
    constexpr qint64 kMost = 0xFFFFFFFF; // what is more is none that a module could have
    static const QRegularExpression number(QStringLiteral("\\A\\+?([0-9]+)\\z"));
    const QRegularExpressionMatch match = number.match(text.trimmed());
    const QString digits = match.captured(1);
    qint64 value = 0;
    for (const QChar digit : digits) {
        value = 10 * value + digit.digitValue();
        if (value > kMost)
            return 0;
    }
    return value;
}

QString functionName(quint8 code)
{
    switch (code) {
    case 1:
        return QStringLiteral("Strain Gauge");
    case 2:
        return QStringLiteral("Voltage");
    case 3:
        return QStringLiteral("IEPE/ICP\u00ae");
    case 6:
        return QStringLiteral("Potentiometer");
    default:
        return QStringLiteral("Unknown");
    }
}

QString decimal(int hundredths, int decimals)
{
    const int scale = decimals == 2 ? 100 : 10;
    const QString sign = hundredths < 0 ? QStringLiteral("-") : QString();
    const int size = std::abs(hundredths);
    return sign + QString::number(size / scale) + QLatin1Char('.') +
           QString::number(size % scale).rightJustified(decimals, QLatin1Char('0'));
}

using Rewriting = QString (*)(QString text);

/// With each text rewritten.
Module_Status rewritten(Module_Status status, Rewriting rewrite)
{
    for (QString *text : {&status.serialNumber, &status.hardwareVersion, &status.firmware1Version,
                          &status.firmware2Version, &status.offsetA, &status.offsetB, &status.filterA,
                          &status.filterB, &status.sensorList, &status.rangeList})
        *text = rewrite(*text);
    return status;
}

constexpr int kAddresses[] = {kControllerAddress, kNumber, kPowerAddress}; ///< one of each kind

/// What reports are made of, with this module at each address and its texts in place of the system's.
StatusStore storeOf(Module_Status status)
{
    StatusStore store;
    System_Status system;
    system.nModules = kNumber;
    system.sModules[0] = wireCode(ModuleType::Power);
    system.samplingRate = status.serialNumber;
    system.bitRate = status.sensorList;
    store.setSystem(system);
    for (const int address : kAddresses) {
        status.moduleAddress = static_cast<quint8>(address);
        require(store.setModule(status), "an address has its place");
    }
    return store;
}

/// The text without anything that HTML could take for markup, as long as before.
QString withoutMarkup(QString text)
{
    static const QRegularExpression markup(QStringLiteral("[<>&\"']"));
    return text.replace(markup, QStringLiteral("x"));
}

/// The text as one word.
QString asWord(QString text)
{
    for (QChar &character : text) {
        if (character.isSpace() || character.category() == QChar::Other_Control)
            character = QLatin1Char('x');
    }
    return text;
}

const QRegularExpression &tag()
{
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    return tag;
}

QStringList tagsOf(const QString &html)
{
    QStringList tags;
    for (auto matches = tag().globalMatch(html); matches.hasNext();)
        tags.append(matches.next().captured());
    return tags;
}

/// What the report says to its reader.
QString shownBy(QString html)
{
    static const QRegularExpression bare(QStringLiteral("&(?!(amp|lt|gt|quot|nbsp);)"));
    html.remove(tag());
    require(!html.contains(bare), "the entities of a report are its own");
    html.replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
    html.replace(QStringLiteral("&lt;"), QStringLiteral("<"));
    html.replace(QStringLiteral("&gt;"), QStringLiteral(">"));
    html.replace(QStringLiteral("&quot;"), QStringLiteral("\""));
    return html.replace(QStringLiteral("&amp;"), QStringLiteral("&"));
}

/// Both are one report, `harmless` made of the texts without markup.
void checkHtml(const QString &html, const QString &harmless)
{
    if (html == harmless)
        return;
    require(tagsOf(html) == tagsOf(harmless), "a text of a module is no markup in a report");
    require(withoutMarkup(shownBy(html)) == withoutMarkup(shownBy(harmless)),
            "a report shows the texts of a module as they are");
}

void checkLine(const StatusStore &store, const StatusStore &words, int address)
{
    constexpr int kControllerFields = 16;
    constexpr int kPowerFields = 14;
    constexpr int kAnalogFields = 23;
    const int fields = address == kControllerAddress ? kControllerFields
                       : address == kPowerAddress    ? kPowerFields
                                                     : kAnalogFields;
    const Module_Status &module = store.module(address);
    const QStringList texts{module.serialNumber, module.hardwareVersion, module.firmware1Version,
                            module.firmware2Version};
    const QString line = moduleLine(store, address);
    const QString lineOfWords = moduleLine(words, address);
    require(line.contains(texts.join(QStringLiteral("  "))),
            "the line shows the texts of a module as they are");
    require(asWord(line) == asWord(lineOfWords), "each of them stands where it would as a word");
    require(lineOfWords.count(QLatin1Char('\n')) == 1 && lineOfWords.endsWith(QLatin1String(".\n")),
            "a module is one line");
    require(lineOfWords.split(QStringLiteral("  ")).size() == 1 + fields, "a line has its fields");
}

void checkReports(const Module_Status &status)
{
    require(StatusStore().setModule(status) == (status.moduleAddress < kReportAddresses),
            "only an address of the chain has its place");
    const StatusStore store = storeOf(status);
    const StatusStore harmless = storeOf(rewritten(status, withoutMarkup));
    const StatusStore words = storeOf(rewritten(status, asWord));
    const ReportHead head;
    const auto all = [](int) { return true; };
    checkHtml(overviewHtml(store, all, head), overviewHtml(harmless, all, head));
    checkHtml(protocolHtml(store, kNumber, head), protocolHtml(harmless, kNumber, head));
    for (const int address : kAddresses)
        checkLine(store, words, address);
    const ModuleSettings settings = moduleSettings(status);
    for (const ChannelSettings *channel : {&settings.a, &settings.b}) {
        require(!channel->sensor || channel->sensors.contains(*channel->sensor), "a sensor is of the list");
        require(!channel->range || channel->ranges.contains(*channel->range), "a range is of the list");
    }
}

/// One row, which is kept from input to input: making one takes longer than trying many inputs.
class Row
{
public:
    explicit Row(int type)
        : m_type(type)
        , m_module(type, kNumber)
    {
        if (type == kUnknownType)
            m_module.controller->showAsUnknownModule();
        m_module.begin();
        m_soundRow = shown();
    }

    void take(fuzz::Input &input);

    /// Whatever was reported, a sound report is shown as ever.
    void finish()
    {
        m_module.time.advance(2 * kPendingMs);
        m_sinceChangeMs = kPendingMs;
        m_module.begin();
        require(shown() == m_soundRow, "a sound report is shown, whatever came before");
        m_module.takeSent();
    }

private:
    QStringList shown() const
    {
        QStringList all{m_module.identification(), m_module.live()};
        if (m_type != kUnknownType) {
            all.append(m_module.names());
            all.append(m_module.shownAll());
            for (const Channel channel : kBothChannels) {
                all.append(textsOf(*m_module.typeBox(channel)).join(QLatin1Char('|')));
                all.append(textsOf(*m_module.rangeBox(channel)).join(QLatin1Char('|')));
            }
        }
        return all;
    }

    static QStringList textsOf(const QComboBox &box)
    {
        QStringList texts;
        for (int i = 0; i < box.count(); ++i)
            texts.append(box.itemText(i));
        return texts;
    }

    void takeStatus(const QByteArray &payload);
    void takeLive(const QByteArray &entry);
    void checkStrips(const Module_Status &status) const;
    void checkOffset(Channel channel, const QString &offset) const;
    void checkPolarity(Channel channel, bool isReversed) const;
    void checkFunctions(const Module_Status &status) const;
    static void checkBox(const QComboBox &box, const QStringList &items, int index);

    const int m_type;
    FamilyModule m_module;
    QStringList m_soundRow;
    int m_sinceChangeMs = kPendingMs; ///< since the operator changed something
};

QByteArray statusPayload(fuzz::Input &input, int ownType)
{
    QByteArray payload(sim::kHeadSize, '\0');
    payload[0] = char(sim::StaticStatusCode);
    const bool isForeign = input.flag();
    const quint8 type = input.u8();
    payload.append(static_cast<char>(isForeign ? kNumber + 1 : kNumber));
    payload.append('\0');
    payload.append(static_cast<char>(type == 0 ? ownType : type));
    return payload + input.longBlock();
}

QByteArray listsPayload(fuzz::Input &input, int ownType)
{
    QByteArray payload(sim::kModuleStatusSize, '\0');
    payload[0] = char(sim::StaticStatusCode);
    payload[sim::AddressAt] = char(kNumber);
    payload[sim::TypeAt] = static_cast<char>(ownType);
    for (const int at : {int(sim::BridgeAt), sim::BridgeAt + 1, int(sim::RangeAt), sim::RangeAt + 1,
                         int(sim::FunctionAt), sim::FunctionAt + 1, int(sim::PolarityAt)})
        payload[at] = static_cast<char>(input.u8());
    put(payload, sim::SensorsAt, sim::kListTextSize, input.shortBlock());
    put(payload, sim::RangesAt, sim::kListTextSize, input.shortBlock());
    for (const int at : {int(sim::FilterAt), sim::FilterAt + sim::kShortTextSize, int(sim::OffsetAt),
                         sim::OffsetAt + sim::kShortTextSize})
        put(payload, at, sim::kShortTextSize, input.shortBlock());
    return payload;
}

void Row::takeStatus(const QByteArray &payload)
{
    const Module_Status status = decodeModuleStatus(payload);
    checkReports(status);
    const QStringList before = shown();
    m_module.take(status);
    if (status.moduleAddress != kNumber) {
        require(shown() == before, "a status of another module changes nothing");
        return;
    }
    require(m_module.identification() == status.serialNumber + QLatin1Char('|') + status.hardwareVersion +
                                             QLatin1Char('|') + status.firmware1Version + QLatin1Char('|') +
                                             status.firmware2Version,
            "the identification is shown");
    if (status.moduleType == m_type && m_type != kUnknownType && m_sinceChangeMs >= kPendingMs)
        checkStrips(status);
}

void Row::checkBox(const QComboBox &box, const QStringList &items, int index)
{
    require(textsOf(box) == items, "the list offers its items");
    require(box.currentIndex() == (index < items.size() ? index : -1), "the item of the index is shown");
}

void Row::checkStrips(const Module_Status &status) const
{
    const bool isUniversal = m_type == 9;
    for (const Channel channel : kBothChannels) {
        const bool isA = channel == Channel::A;
        checkBox(*m_module.typeBox(channel), itemsOf(textOf(channel, status.sensorList, isUniversal)),
                 isA ? status.bridgeIndexA : status.bridgeIndexB);
        checkBox(*m_module.rangeBox(channel), itemsOf(textOf(channel, status.rangeList, isUniversal)),
                 isA ? status.rangeIndexA : status.rangeIndexB);
        const QSpinBox &box = *m_module.filterBox(channel);
        const qint64 filter = filterOf(isA ? status.filterA : status.filterB);
        require(box.value() == qBound<qint64>(box.minimum(), filter, box.maximum()), "the filter is shown");
        checkOffset(channel, isA ? status.offsetA : status.offsetB);
        checkPolarity(channel, (status.revPolBits & (isA ? 1 : 2)) != 0);
    }
    if (isUniversal)
        checkFunctions(status);
    require(m_module.sent.isEmpty(), "a status sends nothing");
}

void Row::checkOffset(Channel channel, const QString &offset) const
{
    using P = ChannelParameter;
    if (!m_module.has(P::ManualOffset))
        return;
    const QString colour =
        offset == QLatin1String("Auto") ? QStringLiteral(" yellow") : QStringLiteral(" black");
    require(m_module.shown(P::ManualOffset, channel) == offset + colour, "the offset is shown");
}

void Row::checkPolarity(Channel channel, bool isReversed) const
{
    using P = ChannelParameter;
    if (!m_module.has(P::ReversePolarity))
        return;
    const QString picture = isReversed ? QStringLiteral("on black") : QStringLiteral("off unchecked");
    require(m_module.shown(P::ReversePolarity, channel) == picture, "the polarity is shown");
}

/// What the channels of a universal module are called, and whether they have what only a bridge needs.
void Row::checkFunctions(const Module_Status &status) const
{
    const QStringList names{QStringLiteral("Analog"), functionName(status.functionCodeA),
                            functionName(status.functionCodeB)};
    require(m_module.names() == names.join(QLatin1Char('|')), "the functions are shown");
    for (const Channel channel : kBothChannels) {
        const quint8 code = channel == Channel::A ? status.functionCodeA : status.functionCodeB;
        const bool isBridge = !QByteArray("\x02\x03\x05\x06\x08").contains(static_cast<char>(code));
        for (const char *name : {"pushButton_ManualOffset", "checkBox_Shunt_Pos", "checkBox_Shunt_Neg"})
            require(m_module.button(channel, name)->isHidden() != isBridge,
                    "the controls are those of the function");
    }
}

void Row::takeLive(const QByteArray &entry)
{
    QByteArray payload(sim::kHeadSize + sim::kFastEntries * sim::kFastEntrySize, '\0');
    payload.replace(sim::kHeadSize + kNumber * sim::kFastEntrySize, entry.size(), entry);
    const auto entries = decodeFastModuleStatus(payload);
    const QStringList before = m_module.live().split(QLatin1Char('|'));
    m_module.controller->Slot_FastModuleStatus(QVariant::fromValue(entries));
    const QStringList live = m_module.live().split(QLatin1Char('|'));
    const Fast_Module_Status &own = entries.at(kNumber);
    const QString volts = decimal(own.supplyVoltage, 2) + QStringLiteral(" V");
    const QString celsius = decimal(own.temperature * 5 - 550, 1) + QStringLiteral(" °C");
    require(live.at(0) == (own.supplyVoltageInvalid ? before.at(0) : volts), "the voltage is shown");
    require(live.at(1) == (own.temperatureInvalid ? before.at(1) : celsius), "the temperature is shown");
    require((live.at(2) == QLatin1String("O.K.")) == (own.moduleState == 0), "the self-test is shown");
}

void Row::take(fuzz::Input &input)
{
    using listsinput::Step;
    switch (input.choice<Step>()) {
    case Step::Status:
        takeStatus(statusPayload(input, m_type));
        break;
    case Step::Lists:
        takeStatus(listsPayload(input, m_type));
        break;
    case Step::Live:
        takeLive(input.bytes(sim::kFastEntrySize));
        break;
    case Step::Change: {
        const quint8 parameter = input.u8();
        const int channel = 1 + input.u8() % 2;
        if (m_type == kUnknownType)
            break;
        const auto parameters = m_module.parameters();
        m_module.callSlot(parameters.at(parameter % parameters.size()), channel);
        m_module.takeSent();
        m_sinceChangeMs = 0;
        break;
    }
    case Step::Wait: {
        const int ms = input.u16() % (listsinput::kLongestWait + 1);
        m_module.time.advance(ms);
        m_module.takeSent(); // the status is fetched
        m_sinceChangeMs += ms;
        break;
    }
    case Step::Count:
        break;
    }
}

QVector<Row *> *rows = nullptr; // one for each type; they live until the process ends

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QApplication(argc, argv);
    rows = new QVector<Row *>;
    for (const quint8 type : listsinput::kRowTypes)
        rows->append(new Row(type));
}

void fuzz::tryInput(const QByteArray &bytes)
{
    Input input(bytes);
    Row &row = *rows->at(input.u8() % rows->size());
    while (!input.atEnd())
        row.take(input);
    row.finish();
}
