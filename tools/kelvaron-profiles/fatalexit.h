#pragma once

/// Makes a fatal assertion end the program with a message and the exit code for a fault of the
/// program.
void exitOnFatalAssertion();
