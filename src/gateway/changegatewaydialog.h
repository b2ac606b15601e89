#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class ChangeGatewayDialog;
}

/// Asks for the gateway's new address. Starts empty each time it is shown.
class ChangeGatewayDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ChangeGatewayDialog(QWidget *parent = nullptr);
    ~ChangeGatewayDialog() override;

    /// Shows the dialog over all windows of the program; returns at once.
    void ask();

public slots:
    void acceptAddress();

signals:
    /// OK was pressed and the field is not empty. The text is what the operator typed, unchecked.
    void gatewayIpAddress(QString address);

private:
    std::unique_ptr<Ui::ChangeGatewayDialog> m_ui;
};
