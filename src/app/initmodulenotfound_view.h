#pragma once

#include <QFrame>
#include <memory>

namespace Ui {
class InitModuleNotFound_View;
}

/// Stands in the controller slot or in the module list while nothing is there.
class InitModuleNotFound_View : public QFrame
{
    Q_OBJECT

public:
    /// Kinds 3, 4 and 5 tell that no device is connected, any other that no controller is.
    explicit InitModuleNotFound_View(int kind, QWidget *parent = nullptr);
    ~InitModuleNotFound_View() override;

private:
    const std::unique_ptr<Ui::InitModuleNotFound_View> m_ui;
};
