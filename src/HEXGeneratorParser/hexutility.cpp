#include "HEXGeneratorParser/hexutility.h"

#include <QtEndian>

bool HEXGeneratorParser::HexUtility::machineIsLittleEndian()
{
    return Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
}
