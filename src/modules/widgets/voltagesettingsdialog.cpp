#include "modules/widgets/voltagesettingsdialog.h"

#include "base/gui/fonts.h"
#include "modules/widgets/buttonnames.h"

#include "ui_voltagesettingsdialog.h"

VoltageSettingsDialog::VoltageSettingsDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::VoltageSettingsDialog>())
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    nameButtons(*m_ui->buttonBox);
}

VoltageSettingsDialog::~VoltageSettingsDialog() = default;
