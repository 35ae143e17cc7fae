#pragma once

#include "base/fatalassertion.h"

#include <QString>

namespace HParser
{
/// Why a schema cannot be used. The editor ends with the first fault; a review lists them all.
struct SchemaFault
{
    const char* condition; ///< that does not hold, as the fatal assertion prints it
    const char* source;    ///< the source file with the condition
    int sourceLine;
    int line = 0;         ///< of the header, counted from 1; 0 if no single line is at fault
    QString context = {}; ///< the text of that line, or what was checked; may be empty

    /// Ends the process with this condition.
    [[noreturn]] void fail() const { FatalAssertion::fail(condition, source, sourceLine); }
};
} // namespace HParser
