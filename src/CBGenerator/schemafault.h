#pragma once

#include "base/fatalassertion.h"

#include <QString>

namespace HParser
{
/// What keeps a schema from being used. The editor ends with the first one, a review lists them all.
struct SchemaFault
{
    const char* condition; ///< what should hold, as the fatal assertion prints it
    const char* source;    ///< the source file that demands it
    int sourceLine;
    int line = 0;         ///< of the header, counted from 1; 0 for no single line
    QString context = {}; ///< the text of that line, or what was being checked; may be empty

    /// Ends the process with the condition.
    [[noreturn]] void fail() const { FatalAssertion::fail(condition, source, sourceLine); }
};
} // namespace HParser
