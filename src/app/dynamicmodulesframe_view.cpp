#include "app/dynamicmodulesframe_view.h"

#include "ui_dynamicmodulesframe_view.h"

#include <QDebug>

DynamicModulesFrame_View::DynamicModulesFrame_View(QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::DynamicModulesFrame_View>())
{
    m_ui->setupUi(this);
}

DynamicModulesFrame_View::~DynamicModulesFrame_View() = default;

void DynamicModulesFrame_View::addController(QWidget *controller)
{
    m_ui->controllerLayout->addWidget(controller, 0, 0);
    qDebug() << "<<New Controller has been attached>>";
}

void DynamicModulesFrame_View::addModule(QWidget *module, int row)
{
    m_ui->modulesLayout->addWidget(module, row, 0, Qt::AlignTop);
    m_ui->modulesLayout->setAlignment(Qt::AlignTop); // few rows stay at the top of the scroll area
    qDebug().nospace() << "<<New module attached at " << row << ">>";
}

void DynamicModulesFrame_View::removeModule(QWidget *module)
{
    m_ui->modulesLayout->removeWidget(module);
}
