#pragma once

#include "exitcode.h"

#include <QString>

/// An error that ends the run with a line of output and an exit code.
struct Failure
{
    QString message;
    ExitCode code = ExitCode::Failed;
};
