#pragma once

#include "link/settings.h"

#include <QDialog>
#include <memory>

namespace Ui {
class ComConfigBox;
}

/// Sub-dialog for the parameters of the serial port. Holds a record of its own, which keeps what the last
/// parsing put into it, even where that stopped half-way.
class ComConfigBox : public QDialog
{
    Q_OBJECT

public:
    explicit ComConfigBox(QWidget *parent = nullptr);
    ~ComConfigBox() override;

public slots:
    /// Takes the parameters out of "PORT1", port name, baud, parity, data bits, stop bits and emits
    /// setDefaults() if all are good; else logs what was not. The buttons stay as they are. Returns 0.
    int parseConfig(const QStringList &config);

    /// Connected by its name.
    void on_okButton_clicked(bool checked);

signals:
    /// The user confirmed the box; the record holds what the buttons say.
    void setConfiguration(model_Namespace::Settings &mSetting);

    /// A list of parameters was accepted.
    void setDefaults(model_Namespace::Settings &setting);

private:
    std::unique_ptr<Ui::ComConfigBox> m_ui;
    model_Namespace::Settings m_settings;
};
