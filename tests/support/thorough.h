#pragma once

#include <gtest/gtest.h>

#include <QtGlobal>

/// Leaves a test that takes many seconds to `./test.sh --thorough`.
#define THOROUGH_ONLY()                                                                            \
    if (!qEnvironmentVariableIsSet("KELVARON_THOROUGH"))                                           \
    GTEST_SKIP() << "takes many seconds: ./test.sh --thorough runs it"
