#pragma once

#include <QString>

/// One serial port of this machine.
struct QextPortInfo
{
    QString portName; ///< what the uploader can open: "/dev/ttyUSB0", "/dev/cu.usbserial-1", "COM3"
    QString physName;
    QString friendName;
    QString enumName;
    int vendorID = 0;
    int productID = 0;
};
