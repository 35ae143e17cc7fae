#pragma once

#include "serialports/qextportinfo.h"

class QComboBox;

/// A drop-down list of the serial ports by name, as every window that talks to the charger shows it.
class PortDropdown
{
public:
    /// `comboBox` is borrowed and must outlive this object.
    explicit PortDropdown(QComboBox* comboBox);

    /// Lists the ports of this moment, the last one found on top and selected.
    void fill();

    /// Lists all ports anew when `port` is not listed, and selects it when its place lies within
    /// the number of ports listed before. In an empty list nothing is selected here: the combo
    /// box's own choice stays.
    void add(const QextPortInfo& port);

    /// Takes `port` off the list when it is listed.
    void remove(const QextPortInfo& port);

private:
    void insertPorts();
    int indexOf(const QextPortInfo& port) const;

    QComboBox* box;
};
