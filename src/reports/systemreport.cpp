#include "reports/systemreport.h"

#include "base/gui/dialogs.h"
#include "reports/sensormodel.h"
#include "ui_systemreport.h"

SystemReport::SystemReport(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::SystemReport>())
    , m_model(new SensorModel(this))
{
    m_ui->setupUi(this);
}
SystemReport::~SystemReport() = default;
bool SystemReport::isSelected(quint8 address) const
{
    return m_model->isSelected(address);
}
bool SystemReport::isKnown(quint8 address) const
{
    return m_model->isKnown(address);
}
void SystemReport::addModule(const SensorInf &module)
{
    m_model->addModule(module);
}
void SystemReport::clear()
{
    m_model->clear();
}
quint8 SystemReport::firstChecked() const
{
    return m_model->firstChecked();
}
void SystemReport::handleSelectCB() {}
void SystemReport::on_saveCsvBtn_clicked() {}
void SystemReport::on_printBtn_clicked() {}
void SystemReport::on_toClipbrdBtn_clicked() {}
void SystemReport::on_openInFile_clicked() {}
void SystemReport::on_savePDF_clicked() {}
void SystemReport::on_saveAllPdf_clicked() {}
void SystemReport::reportType_clicked(QAbstractButton *) {}
