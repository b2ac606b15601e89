#include "app/resources.h"
#include "base/gui/fonts.h"
#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "firmware/firmwareupdate.h"
#include "gatewayfixture.h"
#include "reports/moduleconfigurationmanager.h"
#include "reports/systemreport.h"
#include "settings/portlister.h"
#include "system/modulesyssettings_view.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTableView>
#include <QtTest>

namespace {

constexpr int kPageWidth = 760; // what the window of the manual leaves for a page

const QString kChain = QStringLiteral(
    "system powering=inductive transmission=inductive bitrate=2500 channels=32 mode=PCM\n"
    "controller serial=CT-4711 hw=2.1 fw1=1.4.2 fw2=1.07 temperature=38\n"
    "power serial=PW-0815 hw=1.3 fw1=1.4.2 fw2=1.02 mode=fixed fixed=12000 auto=9000 "
    "minimum=5000 maximum=24000 input=24 load=1.25 temperature=41\n"
    "module type=1 serial=SG- hw=1.2 fw1=1.4.2 fw2=1.03 bridge=1 rangeA=3 rangeB=4 filter=1000\n"
    "module type=2 serial=VO- hw=1.2 fw1=1.4.2 fw2=1.03 rangeA=2 rangeB=6 filter=1000\n"
    "module type=5 serial=XV- hw=1.2 fw1=1.4.2 fw2=1.03\n"
    "module type=4 serial=TH- hw=1.2 fw1=1.4.2 fw2=1.03 bridgeA=1\n"
    "module type=9 serial=AN- hw=1.2 fw1=1.4.2 fw2=1.03 functionA=1 functionB=2\n"
    "module type=1 serial=SG- hw=1.2 fw1=1.4.2 fw2=1.03 count=2 filter=1000\n");
const QString kUnknownModule = QStringLiteral("module type=77 serial=XX- hw=1.2 fw1=1.4.2 fw2=1.03\n");

// Places of the modules in it.
enum Module { StrainGauge = 1, Voltage, Xvdt, Thermo, Universal, Unknown = 8 };

// What an operator's system has in place of the address at which the simulation is found.
const QString kSystemAddress = QStringLiteral("192.168.0.62");
const QString kGatewayAddress = QStringLiteral("192.168.0.234");

QPixmap fitted(const QPixmap &picture)
{
    if (picture.width() <= kPageWidth)
        return picture;
    return picture.scaledToWidth(kPageWidth, Qt::SmoothTransformation);
}

/// Fewer colours take less room, where that changes nothing.
QImage smallest(const QImage &image)
{
    constexpr int kMost = 256;
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    const auto format = colours.size() <= kMost ? QImage::Format_Indexed8 : QImage::Format_RGB888;
    return image.convertToFormat(format, Qt::AvoidDither);
}

void save(const char *name, const QPixmap &picture)
{
    const QString path = QStringLiteral(VX_PICTURES "/%1.png").arg(QLatin1String(name));
    constexpr int kSmallestFile = 0;
    const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
    QVERIFY2(smallest(image).save(path, "PNG", kSmallestFile), qPrintable(path));
}

void lightLamps(Framework_View *window)
{
    window->setTxLed();
    window->setRxLed();
}

} // namespace

/// Opens the windows of the program before a simulated chain and takes the pictures of the manual.
class ManualPictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { m_fixture.reset(); }
    void mainWindow();
    void mainWindowOffline();
    void connectionDialogs();
    void systemPanel();
    void controllerRow();
    void moduleRows();
    void pendingChannel();
    void channelDialogs();
    void gatewayPanel();
    void reportDialog();
    void firmwareWindow();
    void shortHelp();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    Framework_View *window() { return m_fixture->window(); }
    void start(const QString &chain = kChain);
    void click(const char *button);
    void saveStart(const char *name, Module module);

    std::unique_ptr<GatewayFixture> m_fixture;
};

void ManualPictures::initTestCase()
{
    initResources();
    fonts::installSubstitutions();
    QApplication::setFont(fonts::text(QApplication::font()));
    QVERIFY(QDir().mkpath(QStringLiteral(VX_PICTURES)));
}

void ManualPictures::init()
{
    m_fixture = std::make_unique<GatewayFixture>();
    const QDir folder(fixture().folder.path());
    QVERIFY(folder.mkdir(QStringLiteral("ports")));
    QVERIFY(folder.mkdir(QStringLiteral("desktop")));
    for (const char *port : {"COM4", "COM7", "COM12", "COM20"})
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), folder.filePath(QStringLiteral("ports/") + port)));
}

void ManualPictures::start(const QString &chain)
{
    sim::GatewayState state;
    state.serial = QStringLiteral("4711");
    state.rate.channels = QStringLiteral("32"); // as the chain
    fixture().plugGateway(state);
    fixture().gatewayAddress = QStringLiteral("127.0.0.1:%1").arg(fixture().gateway->port());
    fixture().plug(chain);
    fixture().start();
    WAIT_VERIFY(fixture().isReady());
    WAIT_COMPARE(fixture().rowCount(), fixture().device->chain().modules.size());
    WAIT_VERIFY(fixture().app->moduleConfig()->store().isFull());
    fixture().waitForPolls();
    window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window()));
    fixture().time.hold();
    childByName<QLineEdit>(window(), "ipEdit")->setText(kSystemAddress);
}

void ManualPictures::click(const char *button)
{
    QTest::mouseClick(childByName<QWidget>(window(), button), Qt::LeftButton);
}

void ManualPictures::mainWindow()
{
    start();
    lightLamps(window());
    window()->mainClockHandlr(); // a picture without a time looks broken
    save("main-window", fitted(window()->grab()));
    QRect bar;
    const char *const ends[] = {"configButton", "statusBox", "systemReportButton"};
    for (const char *name : ends) {
        const auto *part = childByName<QWidget>(window(), name);
        bar |= QRect(part->mapTo(window(), QPoint()), part->size());
    }
    constexpr int kMargin = 6;
    bar.adjust(-kMargin, -kMargin, kMargin, kMargin);
    save("connection-bar", fitted(window()->grab(bar)));
}

void ManualPictures::mainWindowOffline()
{
    fixture().plug(kChain); // chooses the port
    fixture().unplug();
    fixture().start();
    childByName<QLineEdit>(window(), "ipEdit")->setText(kSystemAddress);
    QVERIFY(QTest::qWaitForWindowExposed(window()));
    window()->mainClockHandlr();
    save("main-window-offline", fitted(window()->grab()));
}

void ManualPictures::connectionDialogs()
{
    start();
    PortLister *dialog = window()->portLister();
    auto *serial = childByName<QDialog>(dialog, "comConfigBox");
    // Clicks on what opens these dialogs return when they are left.
    const auto serialIsOpen = [serial] {
        save("serial-settings", serial->grab());
        serial->close();
    };
    const auto isOpen = [dialog, serial, serialIsOpen] {
        dialog->Slot_AvailblePorts();
        auto *byPort = childByName<QCheckBox>(dialog, "checkBoxComprt");
        QTest::mouseClick(byPort, Qt::LeftButton, Qt::NoModifier, QPoint(8, byPort->height() / 2));
        childByName<QLineEdit>(dialog, "comBox")->setText(QStringLiteral("20"));
        childByName<QLineEdit>(dialog, "ipAddrBox")->setText(kSystemAddress);
        save("communication-settings", dialog->grab());
        QTimer::singleShot(0, serial, serialIsOpen);
        QTest::mouseClick(childByName<QLineEdit>(dialog, "portConfigBox"), Qt::LeftButton);
        dialog->close();
    };
    QTimer::singleShot(0, dialog, isOpen);
    click("comEdit");
}

void ManualPictures::systemPanel()
{
    start();
    save("system-settings", fitted(window()->findChild<ModuleSysSettings_View *>()->grab()));
    click("bitrateConfigBtn");
    WAIT_VERIFY(fixture().openDialog("samplingRatesDialog"));
    save("bitrate-table", fixture().openDialog("samplingRatesDialog")->grab());
}

void ManualPictures::controllerRow()
{
    start();
    save("controller-row", fitted(fixture().app->controllerModule()->GetView()->grab()));
    click("pushButton_powModType");
    WAIT_VERIFY(fixture().openDialog("powerSettingsDialog"));
    save("power-settings", fixture().openDialog("powerSettingsDialog")->grab());
}

/// The row up to the end of channel A.
void ManualPictures::saveStart(const char *name, Module module)
{
    QWidget *row = fixture().row(module);
    const int end = childByName<QWidget>(row, "vline_2")->mapTo(row, QPoint()).x();
    save(name, row->grab(QRect(0, 0, end, row->height())));
}

void ManualPictures::moduleRows()
{
    start(kChain + kUnknownModule);
    saveStart("module-strain-gauge", StrainGauge);
    saveStart("module-voltage", Voltage);
    saveStart("module-xvdt", Xvdt);
    saveStart("module-thermo", Thermo);
    saveStart("module-unknown", Unknown);
    save("module-universal", fitted(fixture().row(Universal)->grab()));
}

void ManualPictures::pendingChannel()
{
    start();
    const auto press = [this](const char *name) {
        QTest::mouseClick(fixture().button(StrainGauge, 'A', name), Qt::LeftButton);
    };
    press("checkBox_Shunt_Neg_Presel");
    press("checkBox_Shunt_Pos");
    WAIT_VERIFY(!fixture().activeShunts("checkBox_Shunt_Pos").isEmpty());
    fixture().waitForPolls();
    fixture().addFaults(QStringLiteral("silence"));
    gestures::pick(fixture().rangeBox(StrainGauge, 'A'), 5);
    gestures::type(fixture().filterBox(StrainGauge, 'A'), QStringLiteral("2000"));
    QTest::keyClick(fixture().filterBox(StrainGauge, 'A'), Qt::Key_Return);
    press("checkBox_RevPol_100");
    auto *area = childByName<QWidget>(fixture().row(StrainGauge), "channelArea_A");
    save("channel-pending", area->grab());
}

void ManualPictures::channelDialogs()
{
    start();
    QTest::mouseClick(fixture().button(StrainGauge, 'A', "pushButton_ManualOffset"), Qt::LeftButton);
    WAIT_VERIFY(fixture().openDialog("Dialog_ManualOffset"));
    QWidget *offset = fixture().openDialog("Dialog_ManualOffset");
    gestures::check(childByName<QRadioButton>(offset, "radioButton_OptionManual"));
    auto *value = childByName<QLineEdit>(offset, "lineEdit_Manual");
    value->selectAll();
    QTest::keyClicks(value, QStringLiteral("0.25"));
    save("offset-dialog", offset->grab());
    QTest::keyClick(offset, Qt::Key_Escape);
    WAIT_VERIFY(!fixture().openDialog("Dialog_ManualOffset"));

    QTest::mouseClick(childByName<QPushButton>(fixture().row(Universal), "pushButton_ChA"), Qt::LeftButton);
    WAIT_VERIFY(fixture().openDialog("ChangeModuleType"));
    save("function-dialog", fixture().openDialog("ChangeModuleType")->grab());
}

void ManualPictures::gatewayPanel()
{
    start();
    fixture().openConnectedPanel();
    for (int polls = 0; polls < 3; ++polls)
        fixture().nextPoll();
    fixture().part<QLineEdit>("ipAddrBox")->setText(kGatewayAddress);
    fixture().part<QLineEdit>("portNo")->setText(QStringLiteral("9999"));
    save("gateway-panel", fitted(fixture().panel()->grab()));
    fixture().clickPart("setExtAddress");
    WAIT_VERIFY(fixture().openDialog("externIpAndPort"));
    save("gateway-external", fixture().openDialog("externIpAndPort")->grab());
}

void ManualPictures::reportDialog()
{
    start();
    WAIT_VERIFY(fixture().app->moduleConfig()->store().isFull());
    click("systemReportButton");
    SystemReport *dialog = fixture().app->moduleConfig()->reportDialog();
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    QTest::mouseClick(childByName<QCheckBox>(dialog, "systemPDFcheckBox"), Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, childByName<QCheckBox>(dialog, "systemPDFcheckBox")->height() / 2));
    auto *table = childByName<QTableView>(dialog, "tableView");
    for (const int row : {2, 5}) {
        const QPoint place = table->visualRect(table->model()->index(row, 1)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    table->clearSelection();
    save("report-dialog", fitted(dialog->grab()));
}

void ManualPictures::firmwareWindow()
{
    start();
    QFile image(fixture().folder.filePath("VX_ANA_FPGA5_2.bin"));
    QVERIFY(image.open(QIODevice::WriteOnly));
    const QByteArray chip("iCE40UP5K-SG48");
    image.write(chip + QByteArray(104090 - chip.size(), '\x5A')); // as large as such an image is
    image.close();
    FirmwareUpdate *update = window()->firmwareUpdate();
    update->Slot_UpdateFirmwrFilePath(image.fileName());
    window()->Slot_FirmwareUpdate();
    QVERIFY(QTest::qWaitForWindowActive(update));
    QTest::mouseClick(childByName<QPushButton>(update, "flashButton"), Qt::LeftButton);
    const auto *bar = childByName<QProgressBar>(update, "progressBar");
    WAIT_VERIFY(bar->value() * 2 > bar->maximum());
    childByName<QLineEdit>(update, "filePathEdit")
        ->setText(QStringLiteral("/home/operator/VX_ANA_FPGA5_2.bin"));
    save("firmware-window", fitted(update->grab()));
}

void ManualPictures::shortHelp()
{
    start();
    window()->displayHelp();
    auto *help = childByName<QDialog>(window(), "HelpWindow");
    QVERIFY(QTest::qWaitForWindowActive(help));
    save("short-help", fitted(help->grab()));
}

QTEST_MAIN(ManualPictures)

#include "manualpictures.moc"
