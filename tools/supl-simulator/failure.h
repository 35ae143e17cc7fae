#pragma once

#include "exitcode.h"

#include <QString>

/// Thrown by whatever cannot go on; ends the run with a line of output and an exit code.
struct Failure
{
    QString message;
    ExitCode code = ExitCode::Failed;
};
