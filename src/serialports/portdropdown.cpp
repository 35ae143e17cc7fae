#include "serialports/portdropdown.h"

#include "serialports/portlistmodel.h"
#include "serialports/qextserialenumerator.h"

#include <QAbstractItemView>
#include <QComboBox>

PortDropdown::PortDropdown(QComboBox* comboBox) : box(comboBox)
{
    box->setModel(new PortListModel(box));
    box->view()->setAccessibleName(box->accessibleName());
}

void PortDropdown::fill()
{
    insertPorts();
    box->setCurrentIndex(0);
}

void PortDropdown::add(const QextPortInfo& port)
{
    if (indexOf(port) >= 0) {
        return;
    }
    const int oldCount = box->count();
    box->clear();
    insertPorts();
    const int index = indexOf(port);
    if (index >= 0 && index < oldCount) {
        box->setCurrentIndex(index);
    }
}

void PortDropdown::remove(const QextPortInfo& port)
{
    const int index = indexOf(port);
    if (index >= 0) {
        box->removeItem(index);
    }
}

void PortDropdown::insertPorts()
{
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo& port : ports) {
        box->insertItem(0, port.portName);
    }
}

int PortDropdown::indexOf(const QextPortInfo& port) const
{
    return box->findText(port.portName, Qt::MatchExactly | Qt::MatchCaseSensitive);
}
