#pragma once

#include <QMessageBox>

/// The warning that stands beside the main window and does not block it. Its size is fixed; a message box
/// would choose its own each time it is shown.
class WarningBox : public QMessageBox
{
    Q_OBJECT

public:
    explicit WarningBox(QWidget *parent);

    /// Shows the text, in place of the one before if the box is still open.
    void showWarning(const QString &text);

protected:
    bool event(QEvent *event) override;
};
