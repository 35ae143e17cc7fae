#pragma once

#include "serialports/qextportinfo.h"

class QComboBox;

/// The drop-down list of serial ports in every window that talks to the charger.
class PortDropdown
{
public:
    /// `comboBox` is borrowed and must outlive this object.
    explicit PortDropdown(QComboBox* comboBox);

    /// Lists the current ports, the last one found on top and selected.
    void fill();

    /// Lists all ports again if `port` is not listed, and selects it if its index is less than the
    /// number of ports listed before. Into an empty list nothing is selected here; the combo box's
    /// own choice stays.
    void add(const QextPortInfo& port);

    /// Removes `port` from the list if it is listed.
    void remove(const QextPortInfo& port);

private:
    void insertPorts();
    int indexOf(const QextPortInfo& port) const;

    QComboBox* box;
};
