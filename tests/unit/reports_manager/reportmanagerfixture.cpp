#include "reportmanagerfixture.h"

#include "reports/sensormodel.h"

#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QFileDialog>
#include <QLineEdit>
#include <QRegularExpression>
#include <QUrl>
#include <QtTest>

void ReportManagerFixture::openUrl(const QUrl &url)
{
    m_events.append(QStringLiteral("open|") + url.toLocalFile());
}

void ReportManagerFixture::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(QDir().mkpath(desktopFolder()));
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
    m_log = std::make_unique<MessageCatcher>();
    m_time = std::make_unique<VirtualTime>();
    m_manager = std::make_unique<ModuleConfigurationManager>(
        ReportEnvironment{*m_time, QStringLiteral("1.1.62"), QStringLiteral("Test OS 5"), desktopFolder()});
    m_events.clear();
    connect(m_manager.get(), &ModuleConfigurationManager::DefltLctn, this,
            [this](const QString &path) { m_events.append(QStringLiteral("DefltLctn|") + path); });
    connect(m_manager.get(), &ModuleConfigurationManager::debugMessage, this,
            [this](const QString &text) { m_events.append(QStringLiteral("debugMessage|") + text); });
}

void ReportManagerFixture::cleanup()
{
    m_manager.reset();
    m_time.reset();
    m_log.reset();
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    m_folder.reset();
}

void ReportManagerFixture::loseViewers(int files)
{
    static const QRegularExpression complaint(QStringLiteral("No such method .*::thereIsNoSuchSlot"));
    for (int i = 0; i < files; ++i)
        QTest::ignoreMessage(QtWarningMsg, complaint);
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "thereIsNoSuchSlot");
}

void ReportManagerFixture::expectCritical(const QString &text)
{
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QRegularExpression::escape(text)));
}

QString ReportManagerFixture::makeFolder(const QString &name) const
{
    const QString path = folder() + '/' + name;
    if (!QDir().mkpath(path))
        qFatal("The folder cannot be made");
    return path;
}

QByteArray ReportManagerFixture::readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("absent");
}

QStringList ReportManagerFixture::files() const
{
    QStringList found;
    QDirIterator iterator(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        iterator.next();
        found.append(iterator.fileName());
    }
    return found;
}

void ReportManagerFixture::fill(const QVector<Module_Status> &modules)
{
    m_manager->Slot_SaveSystemStatus(
        QVariant::fromValue(reportrecords::system(static_cast<quint16>(modules.size()))));
    m_manager->Slot_SaveFastSystemStatus(QVariant::fromValue(Fast_System_Status()));
    m_manager->Slot_SaveFastModuleStatus(QVariant::fromValue(
        QVector<Fast_Module_Status>{reportrecords::fast(2412, 161), reportrecords::fast(2400, 160, 3)}));
    fileModule(reportrecords::controller());
    for (const Module_Status &module : modules)
        fileModule(module);
    m_log->clear();
    m_events.clear();
}

void ReportManagerFixture::fileModule(const Module_Status &module)
{
    m_manager->Slot_SaveStaticModuleStatus(QVariant::fromValue(module));
}

SensorModel &ReportManagerFixture::table() const
{
    auto *model = report().findChild<SensorModel *>();
    if (!model)
        qFatal("The dialog has no table");
    return *model;
}

QFileDialog &ReportManagerFixture::saveDialog() const
{
    return *childByName<QFileDialog>(&report(), "saveDialog");
}

QString ReportManagerFixture::proposedName() const
{
    return childByName<QLineEdit>(&saveDialog(), "fileNameEdit")->text();
}

void ReportManagerFixture::saveAs(const QString &path, const std::function<void()> &meanwhile)
{
    QFileDialog &dialog = saveDialog();
    auto *name = childByName<QLineEdit>(&dialog, "fileNameEdit");
    dialog.activateWindow();
    // Only with the focus what is entered counts before what is selected in the list.
    if (!QTest::qWaitForWindowActive(&dialog) || !QTest::qWaitFor([name] { return name->hasFocus(); }))
        qFatal("The name cannot be entered");
    name->setText(path);
    if (meanwhile)
        QMetaObject::invokeMethod(this, meanwhile, Qt::QueuedConnection);
    QTest::keyClick(name, Qt::Key_Return);
    m_time->turn();
}
