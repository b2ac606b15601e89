#include "firmware/debugwindow.h"

#include "ui_debugwindow.h"

DebugWindow::DebugWindow(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DebugWindow>())
{
    m_ui->setupUi(this);
}

DebugWindow::~DebugWindow() = default;

void DebugWindow::appendTextToDebugBox(QString) {}
void DebugWindow::Slot_FPGAStart() {}
void DebugWindow::Slot_FPGAStop() {}
void DebugWindow::Slot_FPGAerasePage() {}
void DebugWindow::Slot_ProgramBlock() {}
