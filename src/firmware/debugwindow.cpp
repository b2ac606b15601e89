#include "firmware/debugwindow.h"

#include "base/gui/tabtochecked.h"
#include "ui_debugwindow.h"

#include <QDebug>
#include <QScreen>

DebugWindow::DebugWindow(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DebugWindow>())
{
    m_ui->setupUi(this);
    tabToChecked(*m_ui->moduleGroup);
    tabToChecked(*m_ui->latticeGroup);
    connect(m_ui->startButton, &QPushButton::clicked, this, &DebugWindow::Slot_FPGAStart);
    connect(m_ui->stopButton, &QPushButton::clicked, this, &DebugWindow::Slot_FPGAStop);
    connect(m_ui->eraseButton, &QPushButton::clicked, this, &DebugWindow::Slot_FPGAerasePage);
    connect(m_ui->programButton, &QPushButton::clicked, this, &DebugWindow::Slot_ProgramBlock);
    if (const QScreen *display = screen())
        qDebug() << "Screen Dpix:" << display->logicalDotsPerInchX()
                 << "DpiY:" << display->logicalDotsPerInchY();
}

DebugWindow::~DebugWindow() = default;

void DebugWindow::appendTextToDebugBox(QString text)
{
    m_ui->debugBox->appendPlainText(text);
}

void DebugWindow::Slot_FPGAStart()
{
    send(firmwareimage::plainCommand(target(), FpgaCommandCode::Start));
}

void DebugWindow::Slot_FPGAStop()
{
    send(firmwareimage::plainCommand(target(), FpgaCommandCode::Stop));
}

void DebugWindow::Slot_FPGAerasePage()
{
    send(firmwareimage::plainCommand(target(), FpgaCommandCode::ErasePage));
}

void DebugWindow::Slot_ProgramBlock()
{
    send(firmwareimage::blockCommand(target(), 0, QByteArray()));
}

firmwareimage::Target DebugWindow::target() const
{
    firmwareimage::Target target; // what counts if nothing is checked
    if (m_ui->analogButton->isChecked())
        target.module = 1;
    if (m_ui->lattice5Button->isChecked())
        target.fpga = 2;
    return target;
}

void DebugWindow::send(const FPGAfwCommand &command)
{
    emit Signal_FpgaCmd(QVariant::fromValue(command));
}
