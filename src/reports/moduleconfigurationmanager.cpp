#include "reports/moduleconfigurationmanager.h"

#include "base/gui/confirmation.h"
#include "base/gui/dialogs.h"
#include "base/gui/heldkeys.h"
#include "base/log.h"
#include "base/timesource.h"
#include "base/variantcast.h"
#include "reports/lineprinter.h"
#include "reports/moduleline.h"
#include "reports/moduletexts.h"
#include "reports/overviewhtml.h"
#include "reports/pdfdocument.h"
#include "reports/protocolhtml.h"
#include "reports/reportfile.h"
#include "reports/reportfilename.h"
#include "reports/reportsheet.h"
#include "reports/systemreport.h"
#include "reports/textviewer.h"
#include "reports/workbook.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QUrl>
#include <array>
#include <utility>

namespace {

constexpr char kSaveTitle[] = "Save Configuration to File";

SensorInf tableRow(const Module_Status &module)
{
    return {moduletexts::longTypeName(module.moduleType), module.serialNumber, Qt::Checked,
            module.moduleAddress};
}

void showNotSaved(QWidget &parent)
{
    auto *box = new QMessageBox(QMessageBox::Critical, QStringLiteral("Error"),
                                QStringLiteral("No configuration data available.\nSave not possibe!"),
                                QMessageBox::Ok, &parent);
    box->setObjectName(QStringLiteral("notSavedBox"));
    box->setWindowFlags(dialogFlags());
    box->button(QMessageBox::Ok)->setAccessibleName(QStringLiteral("OK"));
    ignoreHeldKeys(*box);
    showModalOnce(*box);
}

/// The path as the dialog gave it, with the suffix behind it: the dialog adds none to a name with a point.
QString withSuffix(const QString &path, const QString &suffix)
{
    const QString end = QLatin1Char('.') + suffix;
    return path.endsWith(end, Qt::CaseInsensitive) ? path : path + end;
}

} // namespace

/// What the user is asked for before a report is written.
struct ModuleConfigurationManager::SaveDialog
{
    QString proposal; ///< path without suffix
    QString suffix;   ///< without the point
};

ModuleConfigurationManager::ModuleConfigurationManager(ReportEnvironment environment, QObject *parent)
    : QObject(parent)
    , m_environment(std::move(environment))
    , m_reportDialog(std::make_unique<SystemReport>())
{
    connectDialog();
}

ModuleConfigurationManager::~ModuleConfigurationManager() = default;

void ModuleConfigurationManager::setDialogParent(QWidget &window)
{
    m_reportDialog->setParent(&window, m_reportDialog->windowFlags());
}

void ModuleConfigurationManager::connectDialog()
{
    connect(m_reportDialog.get(), &SystemReport::clipboardCopy, this,
            &ModuleConfigurationManager::setClipboard);
    connect(m_reportDialog.get(), &SystemReport::openInFile, this, &ModuleConfigurationManager::openNotepad);
    connect(m_reportDialog.get(), &SystemReport::printSens, this, &ModuleConfigurationManager::printModule);
    connect(m_reportDialog.get(), &SystemReport::savePDF, this, &ModuleConfigurationManager::printPDF);
    connect(m_reportDialog.get(), &SystemReport::saveAllPdf, this, &ModuleConfigurationManager::savePdfAll);
    connect(m_reportDialog.get(), &SystemReport::saveCSV, this, &ModuleConfigurationManager::createXlsxFile);
}

void ModuleConfigurationManager::Slot_SaveSystemStatus(const QVariant &data)
{
    m_store.setSystem(recordFromVariant<System_Status>(data));
    debugLine("void ModuleConfigurationManager::Slot_SaveSystemStatus(QVariant)") << "save system status";
}

void ModuleConfigurationManager::Slot_SaveFastSystemStatus(const QVariant &data)
{
    m_store.setFastSystem(recordFromVariant<Fast_System_Status>(data));
}

void ModuleConfigurationManager::Slot_SaveStaticModuleStatus(const QVariant &data)
{
    const auto module = recordFromVariant<Module_Status>(data);
    if (m_store.setModule(module) && !m_reportDialog->isKnown(module.moduleAddress))
        m_reportDialog->addModule(tableRow(module));
}

void ModuleConfigurationManager::Slot_SaveFastModuleStatus(const QVariant &data)
{
    m_store.setFastModules(recordFromVariant<QVector<Fast_Module_Status>>(data));
}

void ModuleConfigurationManager::Slot_SaveModuleEepromStatus(const QString &data, int module)
{
    m_store.setEepromText(data, module);
}

void ModuleConfigurationManager::clearList()
{
    m_reportDialog->clear();
}

void ModuleConfigurationManager::setPath(const QString &path)
{
    m_savePath = path;
}

void ModuleConfigurationManager::displaySystemReport()
{
    m_reportDialog->setWindowTitle(QStringLiteral("System Report"));
    showModal(*m_reportDialog);
}

void ModuleConfigurationManager::setClipboard(uchar address)
{
    const QString line = moduleLine(m_store, address);
    qDebug() << line;
    QGuiApplication::clipboard()->setText(line);
}

void ModuleConfigurationManager::openNotepad(uchar address)
{
    const QString path = m_environment.desktopFolder + QStringLiteral("/temp.txt");
    const QByteArray line = moduleLine(m_store, address).toUtf8();
    // The editor comes up in any case, as agreed: with the text of before if this one could not be written.
    saveReport(path, [&line](QIODevice &file) { return file.write(line) == line.size(); });
    showTextFile(path, this);
}

void ModuleConfigurationManager::printModule(uchar address)
{
    const auto printer = std::make_shared<QPrinter>(QPrinter::ScreenResolution);
    prepareLinePrinter(*printer);
    auto *dialog = new QPrintDialog(printer.get(), m_reportDialog.get());
    dialog->setObjectName(QStringLiteral("printDialog"));
    dialog->setWindowTitle(QStringLiteral("Print Document"));
    connect(dialog, &QDialog::accepted, this,
            [this, printer, address] { printLine(*printer, moduleLine(m_store, address)); });
    // On Windows the dialog is over when this returns, and does not come up at all without a printer.
    const QPointer<QPrintDialog> guard(dialog);
    showModalOnce(*dialog);
    if (guard && !guard->isVisible())
        guard->deleteLater();
}

void ModuleConfigurationManager::printPDF(uchar address)
{
    const Module_Status &module = m_store.module(address);
    const QString proposal = reportfilename::moduleProposal(m_savePath, m_environment.time.now(),
                                                            module.serialNumber, module.moduleType);
    chooseFile({proposal, QStringLiteral("pdf")}, [this, address](const QString &path) {
        const QString html = protocolHtml(m_store, address, headFor(path));
        openPdf(path, savePdf(path, html, PdfFlow::OnePage));
        rememberFolder(path);
    });
}

void ModuleConfigurationManager::savePdfAll()
{
    const ModuleFilter isChosen = chosenModules();
    chooseFile({systemProposal(), QStringLiteral("pdf")}, [this, isChosen](const QString &path) {
        const QString html = overviewHtml(m_store, isChosen, headFor(path));
        qDebug() << "HTML DOC \n" << html;
        const bool isSaved = savePdf(path, html, PdfFlow::PageByPage);
        rememberFolder(path);
        openPdf(path, isSaved);
    });
}

void ModuleConfigurationManager::createXlsxFile()
{
    const ModuleFilter isChosen = chosenModules();
    chooseFile({systemProposal(), QStringLiteral("xlsx")}, [this, isChosen](const QString &path) {
        if (m_store.isFull()) {
            saveWorkbook(path, isChosen);
            return;
        }
        debugLine("void ModuleConfigurationManager::createXlsxFile()")
            << "No configaration data available -> saving not possible";
        showNotSaved(*m_reportDialog);
    });
}

QString ModuleConfigurationManager::systemProposal() const
{
    return reportfilename::systemProposal(m_savePath, m_environment.time.now());
}

void ModuleConfigurationManager::chooseFile(const SaveDialog &wish,
                                            const std::function<void(const QString &)> &save)
{
    emit debugMessage(QStringLiteral("save location:") + m_savePath);
    auto *dialog = new QFileDialog(m_reportDialog.get(), QLatin1String(kSaveTitle));
    dialog->setObjectName(QStringLiteral("saveDialog"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(QStringLiteral("(*.%1)").arg(wish.suffix));
    dialog->setDefaultSuffix(wish.suffix); // the proposal has none
    dialog->setSupportedSchemes({QStringLiteral("file")});
    const QFileInfo proposal(wish.proposal);
    if (proposal.dir().exists())
        dialog->setDirectory(proposal.dir());
    dialog->selectFile(proposal.fileName());
    connect(dialog, &QDialog::accepted, this,
            [this, dialog, wish, save] { saveAs(dialog->selectedFiles().value(0), wish, save); });
    showModalOnce(*dialog);
}

void ModuleConfigurationManager::saveAs(const QString &chosen, const SaveDialog &wish,
                                        const std::function<void(const QString &)> &save)
{
    if (chosen.isEmpty())
        return;
    const QString path = withSuffix(chosen, wish.suffix);
    if (path == chosen || !QFileInfo::exists(path)) {
        save(path);
        return;
    }
    Confirmation question; // the dialog asked about another file
    question.name = QStringLiteral("replaceBox");
    question.title = QLatin1String(kSaveTitle);
    question.question =
        QStringLiteral("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName());
    confirm(question, *m_reportDialog, [save, path] { save(path); });
}

bool ModuleConfigurationManager::savePdf(const QString &path, const QString &html, PdfFlow flow)
{
    return saveReport(
        path, [&](QIODevice &file) { return writePdf(file, html, flow, reportfilename::baseName(path)); });
}

void ModuleConfigurationManager::openPdf(const QString &path, bool isSaved)
{
    // What could not be saved is not shown either: an earlier file of this name would pass for the new one.
    if (!isSaved || !QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        emit debugMessage(QStringLiteral("PDF open failed with file name:%1\n").arg(path));
}

void ModuleConfigurationManager::saveWorkbook(const QString &path, const ModuleFilter &isChosen)
{
    const QByteArray bytes = workbook(reportSheet(m_store, isChosen, headFor(path)));
    const bool isSaved = !bytes.isEmpty() && saveReport(path, [&bytes](QIODevice &file) {
        return file.write(bytes) == bytes.size();
    });
    if (!isSaved)
        qCritical() << "Error writing into CSV file";
    rememberFolder(path);
}

void ModuleConfigurationManager::rememberFolder(const QString &path)
{
    m_savePath = QFileInfo(path).absolutePath();
    emit DefltLctn(m_savePath);
}

ReportHead ModuleConfigurationManager::headFor(const QString &path) const
{
    return {path, m_environment.time.now(), m_environment.productVersion, m_environment.osVersion};
}

ModuleFilter ModuleConfigurationManager::chosenModules() const
{
    std::array<bool, kReportAddresses> marks{};
    for (int address = 0; address < kReportAddresses; ++address)
        marks.at(static_cast<std::size_t>(address)) =
            m_reportDialog->isSelected(static_cast<quint8>(address));
    return [marks](int address) { return marks.at(static_cast<std::size_t>(address)); };
}
