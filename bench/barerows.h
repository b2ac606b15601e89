#pragma once

#include "app/dynamicmodulesframe_view.h"

#include <QFrame>
#include <QVector>
#include <QWidget>
#include <vector>

class QLabel;

/// What the form compiler makes of the row of an analog module, with the strips of its two channels and
/// their spin boxes, and nothing of the program's own. What the program's rows cost is told beside it.
class BareRow : public QFrame
{
public:
    explicit BareRow(quint8 typeCode);

    void setVoltage(const QString &text);
    void setTemperature(const QString &text);
    void setSelftest(const QString &text);

private:
    QLabel *m_voltage;
    QLabel *m_temperature;
    QLabel *m_selftest;
};

/// A new frame for rows, in a window as wide as the program's.
struct BareWindow
{
    BareWindow();

    QWidget window;
    DynamicModulesFrame_View frame;
};

/// A window with a bare row for each of these modules.
class BareChain
{
public:
    explicit BareChain(const QVector<quint8> &types);

    const std::vector<BareRow *> &rows() const { return m_rows; }

private:
    BareWindow m_window;
    std::vector<BareRow *> m_rows; // children of the frame
};
