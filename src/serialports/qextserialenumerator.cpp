#include "serialports/qextserialenumerator.h"

#include "base/textfile.h"
#include "serialports/portlistcache.h"
#include "serialports/serialdevices.h"

#include <QSerialPortInfo>
#include <QStringList>

#include <algorithm>

namespace
{
QextSerialEnumerator::Source& replacedSource()
{
    static QextSerialEnumerator::Source source;
    return source;
}

QList<QextPortInfo> enumerateSystemPorts()
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

QList<QextPortInfo> systemPorts()
{
    constexpr int settlingTime = 2000; // milliseconds
    static PortListCache cache([] { return SerialDevices::fingerprint(); }, enumerateSystemPorts,
                               settlingTime);
    return cache.ports();
}

/// Adds the ports named in the installation's file of ports that the system does not list.
void appendNamedPorts(QList<QextPortInfo>& ports)
{
    const QString text = TextFile::read(QStringLiteral("serial_ports.txt")).value_or(QString());
    const QStringList lines = TextFile::splitLines(text);
    for (const QString& line : lines) {
        const QString name = line.trimmed();
        const bool isListed =
            std::any_of(ports.cbegin(), ports.cend(),
                        [&name](const QextPortInfo& port) { return port.portName == name; });
        if (!name.isEmpty() && !isListed) {
            QextPortInfo port;
            port.portName = name;
            port.physName = name;
            ports.append(port);
        }
    }
}
} // namespace

QList<QextPortInfo> QextSerialEnumerator::getPorts()
{
    const Source& source = replacedSource();
    if (source) {
        return source();
    }
    QList<QextPortInfo> ports = systemPorts();
    appendNamedPorts(ports);
    return ports;
}

void QextSerialEnumerator::setSource(Source source)
{
    replacedSource() = std::move(source);
}
