#pragma once

#include <QTest>

/// How long tests wait for an expected event, in milliseconds: so long that on every machine,
/// however slow or busy, only a fault takes longer.
constexpr int patience = 120000;

/// Waits until the condition holds, with the event loop running; returns whether it does.
template <typename Condition>
bool waitFor(Condition condition)
{
    return QTest::qWaitFor(condition, patience);
}
