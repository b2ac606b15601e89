#pragma once

#include <QFrame>
#include <memory>

namespace Ui {
class DynamicModulesFrame_View;
}

/// The list below the system settings panel: a fixed slot for the controller row and a scroll area with one
/// row per analog module. It knows nothing of what it shows.
class DynamicModulesFrame_View : public QFrame
{
    Q_OBJECT

public:
    explicit DynamicModulesFrame_View(QWidget *parent = nullptr);
    ~DynamicModulesFrame_View() override;

    /// Puts the widget into the controller slot. What stood there leaves the slot when it is deleted.
    void addController(QWidget *controller);

    /// Puts the widget at the given row of the list. The caller takes care that the row is free.
    void addModule(QWidget *module, int row);

    /// Takes the widget out of the list; the caller deletes it.
    void removeModule(QWidget *module);

private:
    const std::unique_ptr<Ui::DynamicModulesFrame_View> m_ui;
};
