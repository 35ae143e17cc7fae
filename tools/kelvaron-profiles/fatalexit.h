#pragma once

/// Has a fatal assertion end the program in order, with the exit code for a fault of its own.
void exitOnFatalAssertion();
