#pragma once

#include "reports/sensorinf.h"

#include <QDialog>
#include <memory>

class QAbstractButton;
class SensorModel;
enum class ReportKind;

namespace Ui {
class SystemReport;
}

/// Lets the user choose the kind of report and the modules that it covers. Makes no report itself: its
/// signals tell what is wished.
class SystemReport : public QDialog
{
    Q_OBJECT

public:
    explicit SystemReport(QWidget *parent = nullptr);
    ~SystemReport() override;

    bool isSelected(quint8 address) const; ///< the module of this address is marked
    bool isKnown(quint8 address) const;    ///< the table has the module, marked or not

    /// Appends the module to the table.
    void addModule(const SensorInf &module);

    /// Empties the table.
    void clear();

    /// Address of the first marked module, 0 if there is none.
    quint8 firstChecked() const;

signals:
    void saveCSV();    ///< the complete report as a spreadsheet
    void saveAllPdf(); ///< the overview as PDF
    // For one module, by its address.
    void clipboardCopy(uchar address);
    void openInFile(uchar address);
    void printSens(uchar address);
    void savePDF(uchar address);

public slots:
    /// Marks all modules, or none, as "Select All" says. Does nothing in the kinds of report that hide it.
    void handleSelectCB();
    void on_saveCsvBtn_clicked();
    void on_printBtn_clicked();
    void on_toClipbrdBtn_clicked();
    void on_openInFile_clicked();
    void on_savePDF_clicked();
    void on_saveAllPdf_clicked();

    /// The kind of report was chosen by its button; its default marks are set, also if it is chosen already.
    void reportType_clicked(QAbstractButton *button);

private:
    void setFonts();
    void setUpTable();
    void setUpKinds();
    void makeConnections();
    void setKind(ReportKind kind);
    void showSelection();

    std::unique_ptr<Ui::SystemReport> m_ui;
    SensorModel *m_model; ///< child of this dialog
};
