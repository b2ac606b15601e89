#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class ExternIpAndPort;
}

/// Asks for the address and port to which the gateway sends the data stream.
class ExternIpAndPort : public QDialog
{
    Q_OBJECT

public:
    explicit ExternIpAndPort(QWidget *parent = nullptr);
    ~ExternIpAndPort() override;

public slots:
    /// Shows the dialog with these texts over all windows of the program; returns at once.
    void Slot_displayDialog(QString ipAddr, QString port);
    void Slot_sendDetails();

signals:
    void Signal_setExtDetails(QString ipAddr, QString port); ///< OK was pressed

private:
    std::unique_ptr<Ui::ExternIpAndPort> m_ui;
};
