#include "barerows.h"

#include "protocol/records/moduletypes.h"
#include "ui_bridgechannel_view.h"
#include "ui_changemoduletype.h"
#include "ui_channeltype2_view.h"
#include "ui_channeltype3_view.h"
#include "ui_moduledevice_view.h"

#include <QCoreApplication>
#include <QDialog>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

template <typename Form>
QFrame *bareStrip(QWidget *row)
{
    auto *strip = new QFrame(row);
    Form ui;
    ui.setupUi(strip);
    new QSpinBox(strip);
    return strip;
}

QFrame *bareStripOf(quint8 typeCode, QWidget *row)
{
    switch (moduleFamily(typeCode)) {
    case ModuleFamily::Type2:
        return bareStrip<Ui::ChannelType2_View>(row);
    case ModuleFamily::Type3:
        return bareStrip<Ui::ChannelType3_View>(row);
    case ModuleFamily::Type1:
    case ModuleFamily::Type4:
    case ModuleFamily::Unknown:
        break;
    }
    return bareStrip<Ui::BridgeChannel_View>(row);
}

} // namespace

BareRow::BareRow(quint8 typeCode)
{
    Ui::ModuleDevice_View ui;
    ui.setupUi(this);
    ui.horizontalLayout_10->addWidget(bareStripOf(typeCode, this));
    ui.horizontalLayout_12->addWidget(bareStripOf(typeCode, this));
    if (moduleFamily(typeCode) == ModuleFamily::Type4)
        Ui::ChangeModuleType().setupUi(new QDialog(this));
    m_voltage = ui.label_Voltage;
    m_temperature = ui.label_Temperature;
    m_selftest = ui.label_SelftestSt;
}

void BareRow::setVoltage(const QString &text)
{
    m_voltage->setText(text);
}

void BareRow::setTemperature(const QString &text)
{
    m_temperature->setText(text);
}

void BareRow::setSelftest(const QString &text)
{
    m_selftest->setText(text);
}

BareWindow::BareWindow()
{
    constexpr QSize kSize(1160, 500);
    window.resize(kSize);
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(&frame);
    window.show();
    QCoreApplication::processEvents();
}

BareChain::BareChain(const QVector<quint8> &types)
{
    for (int row = 0; row < types.size(); ++row) {
        m_rows.push_back(new BareRow(types.at(row)));
        m_window.frame.addModule(m_rows.back(), row);
    }
    QCoreApplication::processEvents();
}
