#include "app/initmodulenotfound_view.h"

#include "base/gui/fonts.h"
#include "ui_initmodulenotfound_view.h"

namespace {

constexpr int kFirstDeviceKind = 3;
constexpr int kLastDeviceKind = 5;

} // namespace

InitModuleNotFound_View::InitModuleNotFound_View(int kind, QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::InitModuleNotFound_View>())
{
    m_ui->setupUi(this);
    const bool isDevice = kind >= kFirstDeviceKind && kind <= kLastDeviceKind;
    m_ui->label->setFont(fonts::placeholder());
    m_ui->label->setText(isDevice ? tr("No Device connected or detected.")
                                  : tr("No Controller connected or detected."));
    setAccessibleName(m_ui->label->text());
}

InitModuleNotFound_View::~InitModuleNotFound_View() = default;
