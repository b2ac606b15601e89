#include "gateway/minmaxdialog.h"

#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "modules/widgets/buttonnames.h"
#include "ui_minmaxdialog.h"

namespace {

// Places in the list that opens the dialog.
constexpr int kLabel = 0;
constexpr int kValue = 1;
constexpr int kTitle = 2;
constexpr int kItems = 3;

} // namespace

MinMaxDialog::MinMaxDialog(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::MinMaxDialog>())
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    nameButtons(*m_ui->buttonBox);
    ignoreHeldKeys(*this);
    setObjectName(QStringLiteral("minMaxDialog"));
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &MinMaxDialog::Slot_AcceptValue);
}

MinMaxDialog::~MinMaxDialog() = default;

void MinMaxDialog::Slot_Execute(QStringList items)
{
    if (items.size() < kItems)
        return;
    m_ui->mainLabel->setText(items.at(kLabel));
    m_ui->valueBox->setText(items.at(kValue));
    m_ui->valueBox->selectAll();
    m_ui->valueBox->setFocus();
    setWindowTitle(items.at(kTitle));
    showModal(*this);
}

void MinMaxDialog::Slot_AcceptValue()
{
    emit Signal_setMinMaxValue({m_ui->mainLabel->text(), m_ui->valueBox->text()});
}
