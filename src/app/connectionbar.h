#pragma once

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

/// The widgets at the top of the main window and their layout. They are children of the widget given to the
/// constructor; this class only knows how they look and stand.
class ConnectionBar
{
public:
    explicit ConnectionBar(QWidget *parent);

    /// The bar, left to right. It belongs to nobody until the window puts it into a layout of its own.
    QHBoxLayout *const topLayout;

    QPushButton *const configButton;
    QLineEdit *const ipEdit;
    QLineEdit *const comEdit;
    QLineEdit *const connectionLamp;
    QLineEdit *const txLamp;
    QLineEdit *const rxLamp;
    QLabel *const updateLabel; ///< hidden until there is a newer version
    QPushButton *const helpButton;
    QPushButton *const systemReportButton;
    QLineEdit *const statusBox;

private:
    void setUpConnection();
    void setUpLamps();
    void setUpNoticeAndButtons();
    void setUpStatusBox();
    void layOut();
};
