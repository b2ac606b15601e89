#include "settings/comconfigbox.h"

#include "base/gui/dialogs.h"
#include "settings/serialparameters.h"

#include "ui_comconfigbox.h"

namespace {

/// Key and port name stand in front of the parameters.
constexpr int kPortName = 1;
constexpr int kFirstParameter = 2;
constexpr int kEntries = kFirstParameter + int(serialparameters::kFields.size());

QString checkedText(const QGroupBox &group)
{
    const auto buttons = group.findChildren<QRadioButton *>();
    for (const QRadioButton *button : buttons) {
        if (button->isChecked())
            return button->text();
    }
    return QString();
}

} // namespace

ComConfigBox::ComConfigBox(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::ComConfigBox>())
{
    m_ui->setupUi(this);
    // The Tab key goes to the chosen button of each group, the arrow keys to the others.
    const auto buttons = findChildren<QRadioButton *>();
    for (QRadioButton *button : buttons) {
        if (!button->isChecked())
            button->setFocusPolicy(Qt::ClickFocus);
    }
}

ComConfigBox::~ComConfigBox() = default;

int ComConfigBox::parseConfig(const QStringList &config)
{
    if (config.size() < kEntries)
        return 0;
    int entry = kFirstParameter;
    for (const serialparameters::Field field : serialparameters::kFields) {
        if (!serialparameters::parse(field, config.at(entry++), m_settings))
            return 0;
    }
    m_settings.portName = config.at(kPortName);
    emit setDefaults(m_settings);
    return 0;
}

void ComConfigBox::on_okButton_clicked(bool checked)
{
    Q_UNUSED(checked)
    const std::array<QGroupBox *, serialparameters::kFields.size()> groups = {
        m_ui->baudRateGroup, m_ui->parityGroup, m_ui->dataBitsGroup, m_ui->stopBitsGroup};
    bool isGood = true;
    for (std::size_t i = 0; i < groups.size() && isGood; ++i)
        isGood =
            serialparameters::parse(serialparameters::kFields.at(i), checkedText(*groups.at(i)), m_settings);
    if (isGood)
        emit setConfiguration(m_settings);
    hide();
}
