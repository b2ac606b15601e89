#include "modules/widgets/dialog_manualoffset.h"

#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "modules/common/offsettext.h"
#include "modules/widgets/buttonnames.h"

#include "ui_dialog_manualoffset.h"

#include <QDebug>

namespace {

constexpr QSize kSize(229, 142);

} // namespace

Dialog_ManualOffset::Dialog_ManualOffset(const QString &value, double /*minimum*/, double /*maximum*/,
                                         double /*step*/, QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::Dialog_ManualOffset>())
    , m_value(value)
{
    setFont(fonts::text());
    m_ui->setupUi(this); // also joins the buttons to the slots named after them
    nameButtons(*m_ui->buttonBox);
    setFixedSize(kSize.expandedTo(minimumSizeHint()));
    if (m_value == automaticOffset()) {
        m_ui->radioButton_OptionAuto->setChecked(true); // the line edit stays enabled, on purpose
    } else {
        m_ui->radioButton_OptionManual->setChecked(true);
        m_ui->lineEdit_Manual->setText(m_value);
    }
    connect(m_ui->lineEdit_Manual, &QLineEdit::textChanged, this, &Dialog_ManualOffset::manualValue);
}

Dialog_ManualOffset::~Dialog_ManualOffset() = default;

void Dialog_ManualOffset::on_radioButton_OptionManual_clicked()
{
    m_ui->lineEdit_Manual->setEnabled(true);
    m_value = m_ui->lineEdit_Manual->text();
}

void Dialog_ManualOffset::on_radioButton_OptionAuto_clicked()
{
    m_ui->lineEdit_Manual->setEnabled(false);
    m_value = automaticOffset();
}

void Dialog_ManualOffset::manualValue(const QString &text)
{
    qDebug() << "Changed value" << text;
    m_value = text;
}

void Dialog_ManualOffset::on_buttonBox_accepted()
{
    accept();
}

void Dialog_ManualOffset::on_buttonBox_rejected()
{
    reject();
}
