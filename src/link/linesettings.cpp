#include "link/linesettings.h"

#include <QDebug>
#include <QSerialPort>

void applyLineSettings(QSerialPort &port, const model_Namespace::Settings &settings)
{
    const auto tell = [&settings](bool accepted, const char *setting) {
        if (!accepted)
            qDebug().noquote() << "Info : Port" << settings.portName << "does not take the" << setting;
    };
    tell(port.setBaudRate(settings.baudRate, QSerialPort::AllDirections), "baud rate");
    tell(port.setDataBits(static_cast<QSerialPort::DataBits>(settings.dataBits)), "data bits");
    tell(port.setParity(static_cast<QSerialPort::Parity>(settings.parity)), "parity");
    tell(port.setStopBits(static_cast<QSerialPort::StopBits>(settings.stopBits)), "stop bits");
    tell(port.setFlowControl(QSerialPort::NoFlowControl), "flow control");
}
