#include "reports/systemreport.h"

#include "base/gui/dialogs.h"
#include "base/gui/firstshow.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "base/gui/tabtochecked.h"
#include "reports/sensormodel.h"
#include "ui_systemreport.h"

#include <QDebug>
#include <QHeaderView>

namespace {

constexpr int kMarkColumnWidth = 5; ///< pixels; the header's smallest width wins
constexpr int kCellMargin = 3;      ///< pixels, on each side of a cell
constexpr int kRowMargin = 4;       ///< pixels, above and below the text

} // namespace

SystemReport::SystemReport(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::SystemReport>())
    , m_model(new SensorModel(this))
{
    m_ui->setupUi(this);
    m_ui->tableView->setModel(m_model);
    beforeFirstShow(*this, [this] { // it is made at the start of the program, and fonts take long to look up
        setFonts();
        setUpTable();
    });
    setUpKinds();
    makeConnections();
    ignoreHeldKeys(*this);
    reportType_clicked(m_ui->systemPDFcheckBox);
}

SystemReport::~SystemReport() = default;

void SystemReport::setFonts()
{
    m_ui->ReportTypeGroupBox->setFont(fonts::text());
    m_ui->selectionCB->setFont(fonts::text());
    m_ui->tableView->setFont(fonts::small());
    m_ui->tableView->horizontalHeader()->setFont(fonts::small());
    for (QCheckBox *kind : {m_ui->systemExcelCheckbox, m_ui->systemPDFcheckBox, m_ui->oneModuleCheckbox})
        kind->setFont(fonts::strong());
    for (QLabel *explanation : {m_ui->label_1, m_ui->label_2, m_ui->label_3})
        explanation->setFont(fonts::small());
    const auto buttons = findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        button->setFont(fonts::small());
}

void SystemReport::setUpTable()
{
    ModuleTable &table = *m_ui->tableView;
    const QFontMetrics metrics(table.font());
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(metrics.height() + 2 * kRowMargin);

    QHeaderView &header = *table.horizontalHeader();
    const int markWidth = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &table);
    header.setMinimumSectionSize(markWidth + 4 * kCellMargin);
    header.setSectionResizeMode(SensorModel::MarkColumn, QHeaderView::Fixed);
    header.setSectionResizeMode(SensorModel::SerialColumn, QHeaderView::Stretch);
    const int longestType = metrics.horizontalAdvance(QStringLiteral("Inductive Transmitter"));
    table.setColumnWidth(SensorModel::TypeColumn, longestType + 4 * kCellMargin);
    table.setColumnWidth(SensorModel::MarkColumn, kMarkColumnWidth);
}

void SystemReport::setUpKinds()
{
    // Where it is hidden the table stays in its place.
    QSizePolicy policy = m_ui->selectionCB->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_ui->selectionCB->setSizePolicy(policy);

    m_ui->systemExcelCheckbox->setAccessibleDescription(m_ui->label_1->text());
    m_ui->systemPDFcheckBox->setAccessibleDescription(m_ui->label_2->text());
    m_ui->oneModuleCheckbox->setAccessibleDescription(m_ui->label_3->text());
    tabToChecked(*m_ui->reportTypeGroup);
}

void SystemReport::makeConnections()
{
    connect(m_ui->reportTypeGroup, qOverload<QAbstractButton *>(&QButtonGroup::buttonClicked), this,
            &SystemReport::reportType_clicked);
    connect(m_ui->selectionCB, &QCheckBox::clicked, this, &SystemReport::handleSelectCB);
    connect(m_ui->tableView, &ModuleTable::clicked, m_model, &SensorModel::onTableClicked);
    connect(m_model, &SensorModel::dataChanged, this, &SystemReport::showSelection);
    connect(m_model, &SensorModel::rowsInserted, this, &SystemReport::showSelection);
    connect(m_model, &SensorModel::rowsRemoved, this, &SystemReport::showSelection);
}

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
    m_ui->tableView->setColumnWidth(SensorModel::MarkColumn, kMarkColumnWidth);
}

void SystemReport::clear()
{
    m_model->clear();
}

quint8 SystemReport::firstChecked() const
{
    return m_model->firstChecked();
}

void SystemReport::showSelection()
{
    m_ui->selectionCB->setChecked(m_model->allChecked());
}

void SystemReport::handleSelectCB()
{
    if (m_ui->selectionCB->isHidden())
        return;
    m_model->checkAll(m_ui->selectionCB->isChecked() ? Qt::Checked : Qt::Unchecked);
    showSelection(); // an empty table has nothing to select
}

void SystemReport::on_saveCsvBtn_clicked()
{
    emit saveCSV();
}

void SystemReport::on_printBtn_clicked()
{
    const quint8 address = firstChecked();
    qDebug() << "First Checked " << address;
    emit printSens(address);
}

void SystemReport::on_toClipbrdBtn_clicked()
{
    emit clipboardCopy(firstChecked());
}

void SystemReport::on_openInFile_clicked()
{
    emit openInFile(firstChecked());
}

void SystemReport::on_savePDF_clicked()
{
    emit savePDF(firstChecked());
}

void SystemReport::on_saveAllPdf_clicked()
{
    emit saveAllPdf();
}

void SystemReport::reportType_clicked(QAbstractButton *button)
{
    if (button == m_ui->systemPDFcheckBox)
        setKind(ReportKind::Concise);
    else if (button == m_ui->systemExcelCheckbox)
        setKind(ReportKind::Complete);
    else if (button == m_ui->oneModuleCheckbox)
        setKind(ReportKind::Module);
}

void SystemReport::setKind(ReportKind kind)
{
    const bool isModule = kind == ReportKind::Module;
    m_model->setKind(kind);
    m_ui->selectionCB->setVisible(kind == ReportKind::Concise);
    for (QPushButton *button : {m_ui->openInFile, m_ui->printBtn, m_ui->savePDF, m_ui->toClipbrdBtn})
        button->setEnabled(isModule);
    m_ui->saveAllPdf->setEnabled(kind == ReportKind::Concise);
    m_ui->saveCsvBtn->setEnabled(kind == ReportKind::Complete);
    if (isModule)
        m_model->checkFirstOnly();
    else
        m_model->checkAll(Qt::Checked);
}
