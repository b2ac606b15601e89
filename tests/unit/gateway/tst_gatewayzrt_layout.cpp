#include "gatewaypanel.h"
#include "modules/widgets/qcomboboxnowheel.h"
#include "support/dialoglook.h"

#include <QGroupBox>
#include <QLabel>
#include <QtTest>

namespace {

const QSize kSmallScreen(1000, 640);
constexpr int kLowScreenHeight = 690;

/// The widest values that are to be expected.
GatewayPanel::Fields wideStatus(const QByteArray &mode)
{
    return {{2, "10.20.30"},
            {5, "5"},
            {6, "2500"},
            {7, "16"},
            {8, mode},
            {9, "B"},
            {11, "192.168.100.200"},
            {12, "65535"},
            {17, "123456"},
            {18, "100.5"},
            {19, "100.5"},
            {28, "1e9"},
            {29, "1700000000000000000"},
            {33, "1"},
            {34, "UNCALIBRATED"},
            {35, "-1000000"},
            {36, "65536"},
            {37, "65536"}};
}

void addFontsStylesAndModes()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("style");
    QTest::addColumn<QByteArray>("mode");
    for (const char *family : {"Open Sans", "DejaVu Sans"}) {
        for (const char *style : {"Fusion", "Windows"}) {
            for (const char *mode : {"UDP-B", "TCP-S"})
                QTest::addRow("%s, %s, %s", family, style, mode) << family << style << QByteArray(mode);
        }
    }
}

/// The visible parts of the panel that carry a text or take an action.
QList<QWidget *> parts(const GatewayPanel &p)
{
    QList<QWidget *> found;
    const auto all = p.dialog->findChildren<QWidget *>();
    for (QWidget *widget : all) {
        const bool isPart = widget->inherits("QLabel") || widget->inherits("QAbstractButton") ||
                            widget->inherits("QLineEdit") || widget->inherits("QComboBox") ||
                            widget->inherits("QPlainTextEdit");
        if (isPart && widget->isVisible() && widget->window() == p.dialog.get())
            found.append(widget);
    }
    return found;
}

/// Names of the parts that are not seen whole. The lamps have no text, of a cell its picture counts, and a
/// group is as good as its parts.
QString clippedParts(const GatewayPanel &p)
{
    QStringList names;
    const auto clipped = dialoglook::clipped(*p.dialog);
    for (const QString &name : clipped) {
        const auto *widget = p.child(qPrintable(name));
        const bool isFree = name == "tcpLed" || name == "PCM_Led" || widget->inherits("QGroupBox");
        if (!isFree && !p.table()->isAncestorOf(widget))
            names.append(name);
    }
    const QMargins mark(2, 2, 2, 2);
    const auto cells = p.table()->buttons();
    for (const QPushButton *cell : cells) {
        const QRect picture(QPoint(0, 0), cell->iconSize());
        if (!cell->rect().contains(picture.translated(mark.left(), mark.top()).marginsAdded(mark)))
            names.append(cell->objectName());
    }
    return names.join(QLatin1Char(' '));
}

QRect place(const QWidget &widget)
{
    return QRect(widget.mapTo(widget.window(), QPoint(0, 0)), widget.size());
}

} // namespace

/// Where the parts of the panel stand, in every font and style.
class TstGatewayZrtLayout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void panelFitsASmallScreen_data() { addFontsStylesAndModes(); }
    void panelFitsASmallScreen();
    void valuesAreWhole_data() { addFontsStylesAndModes(); }
    void valuesAreWhole();
    void partsStandApart_data() { addFontsStylesAndModes(); }
    void partsStandApart();
    void dialogueTakesTheRoom();
    void dialogueAndButtonsHaveTheirFonts();
    void titleAndFlags();
    void captionsAndToolTips_data();
    void captionsAndToolTips();
    void listsHaveTheirEntries_data();
    void listsHaveTheirEntries();
    void groupsHoldTheirControls_data();
    void groupsHoldTheirControls();
    void controlsHaveAccessibleNames();
    void tabOrderWithoutALink();
    void tabOrderWithALink();

private:
    /// The font and the style of the present row.
    bool useLook();
};

void TstGatewayZrtLayout::cleanup()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    dialoglook::resetFont();
    fonts::installSubstitutions();
}

bool TstGatewayZrtLayout::useLook()
{
    QFETCH(QString, family);
    QFETCH(QString, style);
    QApplication::setStyle(style);
    return dialoglook::useFont(family);
}

void TstGatewayZrtLayout::panelFitsASmallScreen()
{
    QVERIFY2(useLook(), "The font is not installed.");
    QFETCH(QByteArray, mode);
    const GatewayPanel p;
    QVERIFY2(p.dialog->height() <= kLowScreenHeight, "The panel opens too high."); // 768 pixels with bars
    p.receiveStatus(wideStatus(mode));
    const QSize least = p.dialog->minimumSizeHint();
    QVERIFY2(least.width() <= kSmallScreen.width() && least.height() <= kSmallScreen.height(),
             qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
    p.dialog->resize(kSmallScreen);
    QCOMPARE(p.dialog->size(), kSmallScreen);
    QCOMPARE(clippedParts(p), QString());
    p.dialog->resize(1160, 900);
    QCOMPARE(clippedParts(p), QString());
}

void TstGatewayZrtLayout::valuesAreWhole()
{
    QVERIFY2(useLook(), "The font is not installed.");
    QFETCH(QByteArray, mode);
    const GatewayPanel p;
    p.dialog->resize(p.dialog->minimumSizeHint());
    p.receiveStatus(wideStatus(mode));
    int seen = 0;
    const auto all = parts(p);
    for (const QWidget *part : all) {
        const char *name = qPrintable(part->objectName());
        if (const auto *edit = qobject_cast<const QLineEdit *>(part)) {
            QVERIFY2(edit->fontMetrics().horizontalAdvance(edit->text()) <= edit->width() - 8, name);
            ++seen;
        } else if (const auto *box = qobject_cast<const QComboBoxNoWheel *>(part)) {
            QCOMPARE(box->shownText(), box->currentText());
            ++seen;
        }
    }
    QVERIFY2(seen >= 18, qPrintable(QString::number(seen)));
}

void TstGatewayZrtLayout::partsStandApart()
{
    QVERIFY2(useLook(), "The font is not installed.");
    QFETCH(QByteArray, mode);
    const GatewayPanel p;
    p.receiveStatus(wideStatus(mode));
    p.dialog->resize(p.dialog->minimumSizeHint());
    QCoreApplication::sendPostedEvents();
    const auto all = parts(p);
    QVERIFY(all.size() > 100);
    for (const QWidget *part : all) {
        const char *name = qPrintable(part->objectName());
        QVERIFY2(p.dialog->rect().contains(place(*part)), name);
        for (const QWidget *other : all)
            QVERIFY2(part == other || !place(*part).intersects(place(*other)), name);
    }
    // The units beside their values, the labels beside theirs.
    const QList<QPair<const char *, const char *>> rows{
        {"CoreTempBox", "labelCoreUnit"},     {"labelPcbTemp", "PCBTempBox"},
        {"accuracyPTP", "labelAccuracyUnit"}, {"modeLabel", "comboMode"},
        {"tcpConnect_Btn", "tcpLed"},         {"labelPCM", "PCM_Led"}};
    for (const auto &row : rows) {
        const QRect left = place(*p.child(row.first));
        const QRect right = place(*p.child(row.second));
        QVERIFY2(qAbs(left.center().y() - right.center().y()) <= 1, row.first);
        QVERIFY2(right.left() - left.right() <= 12, row.first);
    }
}

void TstGatewayZrtLayout::dialogueTakesTheRoom()
{
    const GatewayPanel p;
    p.dialog->resize(kSmallScreen);
    QCoreApplication::sendPostedEvents();
    const int tableBefore = p.table()->height();
    const int before = p.child("RxBox")->height();
    p.dialog->resize(kSmallScreen.width(), kSmallScreen.height() + 200);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(p.child("RxBox")->height(), before + 200);
    QCOMPARE(p.table()->height(), tableBefore);
}

void TstGatewayZrtLayout::dialogueAndButtonsHaveTheirFonts()
{
    const GatewayPanel p;
    QCOMPARE(p.child("RxBox")->font().family(), QStringLiteral("Lucida Console"));
    QCOMPARE(p.child("tcpConnect_Btn")->font().pixelSize(), 12);
}

void TstGatewayZrtLayout::titleAndFlags()
{
    const GatewayPanel p;
    QCOMPARE(p.dialog->windowTitle(), QStringLiteral("ZRT Gateway settings"));
    QVERIFY(p.dialog->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(p.dialog->windowFlags() & Qt::WindowCloseButtonHint);
    QVERIFY(p.child("gridLayoutWidget")->isAncestorOf(p.table()));
}

void TstGatewayZrtLayout::captionsAndToolTips_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    const auto row = [](const char *name, const char *text, const char *toolTip = "") {
        QTest::newRow(name) << QString::fromUtf8(text) << QString(toolTip);
    };
    row("ipAddrBox", "192.168.0.234", "ZRT gateway IP Address");
    row("portNo", "9999", "ZRT gateway port number");
    row("tcpConnect_Btn", "Connect", "Connect to the remote zrt gateway");
    row("rebootBtn", "Reboot", "Send Reboot to completely restart the device");
    row("restartBtn", "Restart", "Only restarts the zrt gateway application");
    row("radioLitleEndn", "Little Endian");
    row("radioBigEndn", "Big Endian");
    row("radio16Bit", "16 Bit");
    row("radio18Bit", "18 Bit");
    row("twoComp", "Two's Comp.");
    row("unsignedInt", "Unsigned Int.");
    row("simuLabel", "Simulation:");
    row("modeLabel", "Mode:");
    row("labelCoreTemp", "CPU Core");
    row("labelPcbTemp", "PCB Temp.");
    row("labelCoreUnit", "° C");
    row("labelPcbUnit", "° C");
    row("setExtAddress", "Set", "Set target socket");
    row("labelExtServrIP", "Ext Server");
    row("labelextPort", "Ext Port");
    row("TcpPortDefault", "8888");
    row("ChangeGateway", "Change IP", "Change the Gateway IP Address");
    row("labelSerialNo", "GATEWAY S/N:");
    row("labelGtwVersion", "GATEWAY Ver:");
    row("labelUnixEpoch", "Unix Epoch Time:");
    row("labelActivCOM", "Active Port:");
    row("labelPTP", "PTP:");
    row("labelPCM", "PCM Sync.");
    row("labelPTPState", "State:");
    row("labelAccuracy", "Accuracy:");
    row("labelAccuracyUnit", "ns");
    row("labelMin", "min.");
    row("labelMax", "max.");
    row("debugBtn", "Debug");
    row("labelDataPtcl", "Data Protocol:");
    row("comboActivCOM", "", "Gateway COM port for VX Configuration");
    row("RxBox", "", "Data receiving from the ZRT gateway");
}

void TstGatewayZrtLayout::captionsAndToolTips()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    QTEST(p.text(QTest::currentDataTag()), "text");
    QTEST(p.child(QTest::currentDataTag())->toolTip(), "toolTip");
}

void TstGatewayZrtLayout::listsHaveTheirEntries_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("comboSimultn") << QStringList{
        "Normal",        "Simulation (Triangle)", "+ Full Scale",
        "-  Full Scale", "+ Digital Full Scale",  "-  Digital Full Scale",
        "+ Half Scale",  "-  Half Scale",         "Special Pattern"};
    QTest::newRow("comboMode") << QStringList{"UDP Broadcast", "UDP Multicast", "UDP Unicast",
                                              "TCP Server",    "TCP Client",    "OFF"};
    QTest::newRow("comboActivCOM") << QStringList{"OFF", "COM 1", "COM 2", "COM 3"};
    QTest::newRow("comboPTP") << QStringList{"Off", "Slave mode", "Auto mode"};
    QTest::newRow("comboBoxDataPtcl") << QStringList{"ZRT-1", "IENA-1"};
}

void TstGatewayZrtLayout::listsHaveTheirEntries()
{
    const GatewayPanel p;
    const auto *box = p.child<QComboBox>(QTest::currentDataTag());
    QStringList entries;
    for (int i = 0; i < box->count(); ++i)
        entries.append(box->itemText(i));
    QTEST(entries, "entries");
    QVERIFY(!box->isEditable());
}

void TstGatewayZrtLayout::groupsHoldTheirControls_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("controls");
    QTest::newRow("groupBoxEndian") << "Endian" << QStringList{"radioLitleEndn", "radioBigEndn"};
    QTest::newRow("groupBoxDataLength") << "Data Length" << QStringList{"radio16Bit", "radio18Bit"};
    QTest::newRow("groupBoxDataFormat") << "Data Format" << QStringList{"twoComp", "unsignedInt"};
    QTest::newRow("groupBoxTemperature") << "Temperature" << QStringList{"CoreTempBox", "PCBTempBox"};
    QTest::newRow("groupBoxSamples") << "Samples in Block" << QStringList{"minBox", "maxBox"};
}

void TstGatewayZrtLayout::groupsHoldTheirControls()
{
    QFETCH(QStringList, controls);
    const GatewayPanel p;
    const auto *group = p.child<QGroupBox>(QTest::currentDataTag());
    QTEST(group->title(), "title");
    for (const QString &name : controls)
        QVERIFY2(group->isAncestorOf(p.child(qPrintable(name))), qPrintable(name));
}

void TstGatewayZrtLayout::controlsHaveAccessibleNames()
{
    const GatewayPanel p;
    QCOMPARE(dialoglook::withoutAccessibleName(*p.dialog), QStringList());
    const auto all = parts(p);
    for (const QWidget *part : all) {
        const bool isNamed = part->inherits("QLabel") || !part->accessibleName().isEmpty();
        QVERIFY2(isNamed && (part->inherits("QLabel") || !part->objectName().isEmpty()),
                 qPrintable(part->objectName()));
    }
}

void TstGatewayZrtLayout::tabOrderWithoutALink()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.child("ipAddrBox")->setFocus();
    QCOMPARE(
        dialoglook::tabOrder(*p.dialog, 60),
        (QStringList{"ipAddrBox", "portNo",           "tcpConnect_Btn", "ChangeGateway", "extIpAddr",
                     "extPort",   "setExtAddress",    "SerialNo",       "GtwVersion",    "unixEpochField",
                     "comboPTP",  "PTPStateLineEdit", "accuracyPTP",    "comboActivCOM", "comboBoxDataPtcl",
                     "minBox",    "maxBox",           "debugBtn",       "restartBtn",    "rebootBtn",
                     "RxBox"}));
}

void TstGatewayZrtLayout::tabOrderWithALink()
{
    const GatewayPanel p;
    p.child("tcpConnect_Btn")->setFocus();
    QStringList expected{"tcpConnect_Btn", "ChangeGateway"};
    const auto cells = p.table()->buttons();
    for (const QPushButton *cell : cells) {
        if (cell->isEnabled())
            expected.append(cell->objectName());
    }
    // Of a group of choices the Tab key visits one: the checked one, if any is.
    expected += QStringList{"radioBigEndn",  "radio16Bit",       "twoComp",       "comboMode",
                            "extIpAddr",     "extPort",          "setExtAddress", "SerialNo",
                            "GtwVersion",    "unixEpochField",   "CoreTempBox",   "PCBTempBox",
                            "comboPTP",      "PTPStateLineEdit", "accuracyPTP",   "comboSimultn",
                            "comboActivCOM", "comboBoxDataPtcl", "minBox",        "maxBox",
                            "debugBtn",      "restartBtn",       "rebootBtn",     "RxBox"};
    QCOMPARE(dialoglook::tabOrder(*p.dialog, 100), expected);
}

QTEST_MAIN(TstGatewayZrtLayout)
#include "tst_gatewayzrt_layout.moc"
