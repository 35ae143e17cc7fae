#include "transfer/qextserialenumerator.h"

#include <QSerialPortInfo>

namespace
{
QextSerialEnumerator::Source& replacedSource()
{
    static QextSerialEnumerator::Source source;
    return source;
}

QList<QextPortInfo> systemPorts()
{
    QList<QextPortInfo> ports;
    const QList<QSerialPortInfo> found = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : found) {
        QextPortInfo port;
#ifdef Q_OS_WIN
        port.portName = info.portName();
#else
        port.portName = info.systemLocation();
#endif
        port.physName = info.systemLocation();
        port.friendName = info.description();
        port.enumName = info.manufacturer();
        port.vendorID = info.vendorIdentifier();
        port.productID = info.productIdentifier();
        ports.append(port);
    }
    return ports;
}
} // namespace

QList<QextPortInfo> QextSerialEnumerator::getPorts()
{
    const Source& source = replacedSource();
    return source ? source() : systemPorts();
}

void QextSerialEnumerator::setSource(Source source)
{
    replacedSource() = std::move(source);
}
