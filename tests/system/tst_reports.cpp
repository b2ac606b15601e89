#include "systemfixture.h"

#include "protocol/communication.h"
#include "reports/moduleconfigurationmanager.h"
#include "reports/systemreport.h"
#include "support/pdfreader.h"
#include "support/workbookreader.h"
#include "waiting.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QJsonObject>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QtTest>
#include <algorithm>

namespace {

const QString kChain = QStringLiteral(
    "system bitrate=2500 channels=32 mode=PCM\n"
    "controller serial=\"CT 11\" hw=2.1 fw1=1.4.2 fw2=1.07\n"
    "power serial=PW-1\n"
    "module type=1 serial=SG- hw=1.0 fw1=1.4.2 fw2=2.05 bridgeA=1 rangeB=3\n"
    "module type=9 serial=UN- functionA=2 functionB=4 sensors=\"DC$AC$#Type K$\" ranges=\"1$5$#0...100$\"\n"
    "module type=2 serial=\"<b> & $5\" sensors=\"A<B$C&D$\" ranges=\"1$2$\"\n"
    "module type=4 serial=TH-\n");

QString fileName(const QString &suffix)
{
    return QStringLiteral("Prüfung 'nord' & süd.%1").arg(suffix);
}

/// The values of a sheet; cells are named as "C6".
class Sheet
{
public:
    explicit Sheet(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("There is no spreadsheet");
        m_cells = readWorkbook(file.readAll()).value(QStringLiteral("cells")).toObject();
    }

    QVariant value(const QString &cell) const
    {
        return m_cells.value(cell).toObject().value(QStringLiteral("value")).toVariant();
    }
    QString text(const char *cell) const { return value(QString::fromLatin1(cell)).toString(); }

private:
    QJsonObject m_cells;
};

} // namespace

/// An operator reads a simulated chain, and makes every report of it through the dialog. Files are read back
/// by other programs.
class TstReports : public QObject
{
    Q_OBJECT

public slots:
    /// Stands for the viewer of the desktop.
    void view(const QUrl &url) { m_viewed.append(url.toLocalFile()); }

private slots:
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "view"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    void init();
    void cleanup() { m_fixture.reset(); }

    void overviewOfAllModules();
    void overviewWithoutAnUntickedModule();
    void protocolOfAModule();
    void completeReportAsSpreadsheet();
    void lineInClipboardAndTextFile();
    void folderOutlivesTheProgram();
    void reportIsMadeOfALostChain();
    void fullChainIsReportedWhole();

private:
    void read(const QString &chain);
    void openDialog();
    void choose(const char *kind) { click<QCheckBox>(kind); }
    void clickRow(int row);

    /// Presses the button and saves under this name in the folder of the fixture. Returns the path.
    QString saveBy(const char *button, const QString &name);

    /// The dialog that asks for a file; null if none is open. One that was left may still be there.
    QFileDialog *openChooser() const;

    template <typename T>
    void click(const char *name)
    {
        auto *widget = dialog()->findChild<T *>(QString::fromLatin1(name));
        QVERIFY(widget && widget->isEnabled());
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, widget->height() / 2));
    }
    QString reportFolder() const
    {
        return m_fixture->folder.path() + QStringLiteral("/Berichte \"A\" & mehr");
    }
    SystemReport *dialog() const { return m_fixture->app->moduleConfig()->reportDialog(); }

    std::unique_ptr<SystemFixture> m_fixture;
    QStringList m_viewed; ///< files that the viewer was asked to show
};

void TstReports::init()
{
    m_viewed.clear();
    m_fixture = std::make_unique<SystemFixture>(SystemFixture::LinkKind::Tcp);
    m_fixture->useProductTimeouts();
    QVERIFY(QDir(m_fixture->folder.path()).mkpath(QStringLiteral("desktop")));
    QVERIFY(QDir(m_fixture->folder.path()).mkpath(reportFolder()));
}

void TstReports::read(const QString &chain)
{
    m_fixture->plug(chain);
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    WAIT_VERIFY(m_fixture->app->moduleConfig()->store().isFull());
}

void TstReports::openDialog()
{
    QTest::mouseClick(m_fixture->window()->findChild<QPushButton *>(QStringLiteral("systemReportButton")),
                      Qt::LeftButton);
    QVERIFY(QTest::qWaitForWindowActive(dialog()));
}

void TstReports::clickRow(int row)
{
    auto *table = dialog()->findChild<QTableView *>(QStringLiteral("tableView"));
    const QModelIndex index = table->model()->index(row, 1);
    table->scrollTo(index);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(index).center());
}

QString TstReports::saveBy(const char *button, const QString &name)
{
    click<QPushButton>(button);
    QFileDialog *chooser = openChooser();
    if (!chooser)
        return {};
    chooser->setDirectory(reportFolder());
    chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(name);
    QTest::mouseClick(chooser->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save),
                      Qt::LeftButton);
    return reportFolder() + QLatin1Char('/') + name;
}

QFileDialog *TstReports::openChooser() const
{
    const auto choosers = dialog()->findChildren<QFileDialog *>(QStringLiteral("saveDialog"));
    const auto open = std::find_if(choosers.begin(), choosers.end(),
                                   [](const QFileDialog *chooser) { return chooser->isVisible(); });
    return open == choosers.end() ? nullptr : *open;
}

void TstReports::overviewOfAllModules()
{
    read(kChain);
    openDialog();
    const QString path = saveBy("saveAllPdf", fileName(QStringLiteral("pdf")));
    const QString text = pdfreader::text(path);
    for (const char *part : {"00000CT11", "00SG-0001", "00UN-0002", "<b>&$5", "00TH-0004", "A<B", "±1 V",
                             "Prüfung 'nord' & süd.pdf", "Channels: 32"})
        QVERIFY2(text.contains(QString::fromUtf8(part)), qPrintable(QString::fromUtf8(part) + text));
    QCOMPARE(m_viewed, QStringList(path));
    QCOMPARE(m_fixture->savedSetting(QStringLiteral("FILE_DIR")), reportFolder());
}

void TstReports::overviewWithoutAnUntickedModule()
{
    read(kChain);
    openDialog();
    clickRow(2); // the controller is row 0
    const QString text = pdfreader::text(saveBy("saveAllPdf", fileName(QStringLiteral("pdf"))));
    QVERIFY(text.contains(QStringLiteral("SG-0001")));
    QVERIFY(!text.contains(QStringLiteral("UN-0002")));
    QVERIFY(text.contains(QStringLiteral("TH-0004")));
}

void TstReports::protocolOfAModule()
{
    read(kChain);
    openDialog();
    choose("oneModuleCheckbox");
    clickRow(2);
    const QString path = saveBy("savePDF", QStringLiteral("modul")); // without a suffix
    const QString text = pdfreader::text(path + QStringLiteral(".pdf"));
    for (const char *part :
         {"Module: Analog", "Serial Number: 00UN-0002", "Range Types Channel A: 1 / 5",
          "Bridge Type Channel B: Type K", "Ch.B Range setting: 0...100", "Selftest Message: O.K"})
        QVERIFY2(text.contains(QString::fromUtf8(part)), qPrintable(QString::fromUtf8(part) + text));
    QCOMPARE(m_viewed, QStringList(path + QStringLiteral(".pdf")));
}

void TstReports::completeReportAsSpreadsheet()
{
    read(kChain);
    openDialog();
    choose("systemExcelCheckbox");
    clickRow(2); // changes nothing
    const QString path = saveBy("saveCsvBtn", fileName(QStringLiteral("xlsx")));
    const Sheet sheet(path);
    QVERIFY(sheet.text("A1").startsWith(fileName(QStringLiteral("xlsx"))));
    QCOMPARE(sheet.text("B3"), QStringLiteral("Controller"));
    QCOMPARE(sheet.text("C3"), QStringLiteral("CT 11"));
    QCOMPARE(sheet.value(QStringLiteral("A4")), QVariant(1.0));
    QCOMPARE(sheet.text("C5"), QStringLiteral("UN-0002"));
    QCOMPARE(sheet.text("C6"), QStringLiteral("<b> & $5"));
    QCOMPARE(sheet.text("Y6"), QStringLiteral("A<B$C&D$"));
    QCOMPARE(sheet.text("B7"), QStringLiteral("Thermo"));
    QVERIFY(sheet.value(QStringLiteral("A8")).isNull());
    QCOMPARE(m_viewed, QStringList());
    QCOMPARE(m_fixture->savedSetting(QStringLiteral("FILE_DIR")), reportFolder());
}

void TstReports::lineInClipboardAndTextFile()
{
    read(kChain);
    openDialog();
    choose("oneModuleCheckbox");
    clickRow(1);
    click<QPushButton>("toClipbrdBtn");
    const QString line = QGuiApplication::clipboard()->text();
    QVERIFY2(line.startsWith(QStringLiteral("  1  Strain Gauge  SG-0001  1.0  1.4.2  2.05  ")),
             qPrintable(line));
    QVERIFY(line.endsWith(QStringLiteral("$.\n")));

    click<QPushButton>("openInFile");
    const QString path = m_fixture->folder.path() + QStringLiteral("/desktop/temp.txt");
    QCOMPARE(m_viewed, QStringList(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(QString::fromUtf8(file.readAll()).startsWith(QStringLiteral("  1  Strain Gauge  SG-0001  ")));
}

void TstReports::folderOutlivesTheProgram()
{
    read(kChain);
    openDialog();
    QVERIFY(QFile::exists(saveBy("saveAllPdf", fileName(QStringLiteral("pdf")))));
    m_fixture->startAgain();
    openDialog();
    click<QPushButton>("saveAllPdf");
    const QFileDialog *chooser = openChooser();
    QVERIFY(chooser);
    QCOMPARE(chooser->directory().absolutePath(), reportFolder());
}

/// The chain goes while the operator still looks for a name.
void TstReports::reportIsMadeOfALostChain()
{
    read(kChain);
    openDialog();
    choose("oneModuleCheckbox");
    clickRow(1);
    click<QPushButton>("savePDF");
    QFileDialog *chooser = openChooser();
    QVERIFY(chooser);
    emit m_fixture->app->communication()->Signal_CleanSlateProtocol();
    m_fixture->unplug();
    QVERIFY(!dialog()->isKnown(1));
    const QString path = m_fixture->folder.path() + QStringLiteral("/lost.pdf");
    chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
    QTest::mouseClick(chooser->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save),
                      Qt::LeftButton);
    QVERIFY(pdfreader::text(path).contains(QStringLiteral("00SG-0001")));
}

void TstReports::fullChainIsReportedWhole()
{
    m_fixture->plugFile(QStringLiteral("full128.chain"));
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    WAIT_VERIFY(m_fixture->app->moduleConfig()->store().isFull());
    openDialog();
    const QString text = pdfreader::text(saveBy("saveAllPdf", fileName(QStringLiteral("pdf"))));
    choose("systemExcelCheckbox");
    const Sheet sheet(saveBy("saveCsvBtn", fileName(QStringLiteral("xlsx"))));
    QVERIFY(sheet.value(QStringLiteral("A132")).isNull());
    for (int address = 1; address <= 128; ++address) {
        const QString serial = m_fixture->device->chain().module(address).identity.serial;
        QVERIFY2(text.contains(serial), qPrintable(serial));
        QCOMPARE(sheet.value(QStringLiteral("A%1").arg(3 + address)).toInt(), address);
        QCOMPARE(sheet.value(QStringLiteral("C%1").arg(3 + address)).toString(), serial);
    }
}

QTEST_MAIN(TstReports)

#include "tst_reports.moc"
