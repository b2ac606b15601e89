#include "controller/powersettingsdialog.h"

#include "base/gui/fonts.h"
#include "controller/powersetting.h"
#include "modules/widgets/buttonnames.h"

#include "ui_powersettingsdialog.h"

#include <QIcon>
#include <QPixmap>
#include <QStyle>

namespace {

constexpr int kIconSize = 64; // on the screen, whatever the device's pixels are

/// The style's warning icon for the screen of this widget.
QPixmap warningPicture(const QWidget &widget)
{
    const qreal ratio = widget.devicePixelRatioF();
    const QSize pixels = QSize(kIconSize, kIconSize) * ratio;
    const QIcon icon = widget.style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, &widget);
    QPixmap picture = icon.pixmap(pixels);
    if (picture.size() != pixels) // an icon is never drawn larger than the style has it
        picture = picture.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

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
    m_ui->label_Warning->setPixmap(warningPicture(*this));
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
