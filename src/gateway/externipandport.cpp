#include "gateway/externipandport.h"

#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "modules/widgets/buttonnames.h"
#include "ui_externipandport.h"

ExternIpAndPort::ExternIpAndPort(QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::ExternIpAndPort>())
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    nameButtons(*m_ui->buttonBox);
    ignoreHeldKeys(*this);
    setObjectName(QStringLiteral("externIpAndPort"));
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &ExternIpAndPort::Slot_sendDetails);
}

ExternIpAndPort::~ExternIpAndPort() = default;

void ExternIpAndPort::Slot_displayDialog(QString ipAddr, QString port)
{
    m_ui->ipAddress->setText(ipAddr);
    m_ui->portNo->setText(port);
    m_ui->ipAddress->setFocus();
    showModal(*this);
}

void ExternIpAndPort::Slot_sendDetails()
{
    emit Signal_setExtDetails(m_ui->ipAddress->text(), m_ui->portNo->text());
}
