#include "controller/powersettingsdialog.h"

#include "base/gui/fonts.h"
#include "controller/powersetting.h"
#include "modules/widgets/buttonnames.h"

#include "ui_powersettingsdialog.h"

#include <QIcon>
#include <QStyle>

namespace {

constexpr int kIconSize = 64;

} // namespace

PowerSettingsDialog::PowerSettingsDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::PowerSettingsDialog>())
{
    setObjectName(QStringLiteral("powerSettingsDialog"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setFont(fonts::text());
    m_ui->setupUi(this);
    nameButtons(*m_ui->buttonBox);
    m_ui->label_Warning->setPixmap(
        style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(kIconSize, kIconSize));
    fillProtections();
}

PowerSettingsDialog::~PowerSettingsDialog() = default;

QString PowerSettingsDialog::selectedText() const
{
    return m_ui->comboBox_Protection->currentText();
}

void PowerSettingsDialog::fillProtections()
{
    const QStringList toolTips{
        tr("The output voltage will be switched off when temperature is too high."),
        tr("The output voltage will be reduced to minimum when temperature\n"
           "is too high. If that does not help, it is switched off."),
        tr("The output voltage remains unchanged even if the electronics\n"
           "could be damaged by high module temperatures."),
    };
    m_ui->comboBox_Protection->addItems(protectionNames());
    for (int i = 0; i < toolTips.size(); ++i)
        m_ui->comboBox_Protection->setItemData(i, toolTips.at(i), Qt::ToolTipRole);
}
