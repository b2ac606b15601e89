#include "help/helpwindow.h"

#include "ui_helpwindow.h"

HelpWindow::HelpWindow(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::HelpWindow>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    // The text has one link; where the manual is shown is not decided here.
    connect(m_ui->helpTextBox, &QTextBrowser::anchorClicked, this, &HelpWindow::manualRequested);
}

HelpWindow::~HelpWindow() = default;
