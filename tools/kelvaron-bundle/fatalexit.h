#pragma once

#include <QString>

#include <functional>

/// From here on a fatal assertion of the core ends the program with ExitCode::Failed and a message
/// about this bundle instead of aborting it. `cleanUp` runs first and may be empty.
void exitOnFatalAssertion(const QString& bundlePath, std::function<void()> cleanUp = {});
