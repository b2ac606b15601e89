#include "gateway/changegatewaydialog.h"

#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "modules/widgets/buttonnames.h"
#include "ui_changegatewaydialog.h"

ChangeGatewayDialog::ChangeGatewayDialog(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::ChangeGatewayDialog>())
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    nameButtons(*m_ui->buttonBox);
    ignoreHeldKeys(*this);
    setObjectName(QStringLiteral("changeGatewayDialog"));
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &ChangeGatewayDialog::acceptAddress);
}

ChangeGatewayDialog::~ChangeGatewayDialog() = default;

void ChangeGatewayDialog::ask()
{
    m_ui->IpAddress->clear();
    m_ui->IpAddress->setFocus();
    showModal(*this);
}

void ChangeGatewayDialog::acceptAddress()
{
    const QString address = m_ui->IpAddress->text();
    if (!address.isEmpty())
        emit gatewayIpAddress(address);
}
