#pragma once

#include "reports/reporthead.h"
#include "reports/statusstore.h"

#include <QObject>
#include <QVariant>
#include <functional>
#include <memory>

class QWidget;
class SystemReport;
class TimeSource;
enum class PdfFlow;

/// What reports need of the world around them.
struct ReportEnvironment
{
    TimeSource &time; ///< must outlive the manager
    QString productVersion;
    QString osVersion;
    QString desktopFolder; ///< where the text file goes; no slash at its end
};

/// The memory behind all reports: keeps the last status of every module, owns the report dialog and makes
/// the reports that it asks for. A report can be made at any moment, the device is asked nothing. The names
/// of its operations are agreed. Its dialogs come up and answer by signals; only where the platform's own
/// print dialog blocks, as on Windows, printModule() returns when that is left.
class ModuleConfigurationManager : public QObject
{
    Q_OBJECT

public:
    explicit ModuleConfigurationManager(ReportEnvironment environment, QObject *parent = nullptr);
    ~ModuleConfigurationManager() override;

    const StatusStore &store() const { return m_store; }

    /// The dialog; it belongs to this object.
    SystemReport *reportDialog() const { return m_reportDialog.get(); }

    /// Lets the dialog come up above this window, which outlives this object.
    void setDialogParent(QWidget &window);

public slots:
    // Each files the record that the variant holds; a variant of another type counts as an empty record.
    void Slot_SaveSystemStatus(const QVariant &data);
    void Slot_SaveFastSystemStatus(const QVariant &data);

    /// Also offers the module to the dialog, which takes it if it does not know its address.
    void Slot_SaveStaticModuleStatus(const QVariant &data);

    /// A vector of Fast_Module_Status.
    void Slot_SaveFastModuleStatus(const QVariant &data);
    void Slot_SaveModuleEepromStatus(const QString &data, int module);

    /// Empties the dialog's table; the records stay.
    void clearList();

    /// The folder that the next save dialog begins with.
    void setPath(const QString &path);

    /// Shows the dialog; does not block.
    void displaySystemReport();

    // Reports of one module, by its address: 0 the controller, 129 the power module.
    void setClipboard(uchar address); ///< its line into the clipboard
    void openNotepad(uchar address);  ///< its line into "temp.txt" in the desktop folder, which is shown
    void printModule(uchar address);  ///< its line on paper, after the print dialog
    void printPDF(uchar address);     ///< its test protocol, which is shown once it is saved

    // Reports of the modules that are marked. Each asks for the file first.
    void savePdfAll();     ///< the overview, which is shown once it is saved
    void createXlsxFile(); ///< the complete report; a box refuses it while the store is not full

signals:
    /// The user chose a folder for reports by saving one there.
    void DefltLctn(const QString &path);
    void debugMessage(const QString &error); ///< the folder of a save, or a PDF that cannot be shown

private:
    struct SaveDialog;

    void connectDialog();
    void chooseFile(const SaveDialog &wish, const std::function<void(const QString &)> &save);
    QString systemProposal() const;
    bool savePdf(const QString &path, const QString &html, PdfFlow flow);
    void openPdf(const QString &path, bool isSaved);
    void saveAs(const QString &chosen, const SaveDialog &wish,
                const std::function<void(const QString &)> &save);
    void saveWorkbook(const QString &path, const ModuleFilter &isChosen);
    void rememberFolder(const QString &path);
    ReportHead headFor(const QString &path) const;

    /// The modules that are marked now: what happens to the table while a file is chosen changes nothing.
    ModuleFilter chosenModules() const;

    ReportEnvironment m_environment;
    StatusStore m_store;
    QString m_savePath;
    std::unique_ptr<SystemReport> m_reportDialog;
};
