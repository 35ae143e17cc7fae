#pragma once

#include <QGuiApplication>

#include <vector>

/// Applies the scale factor of the screen.
namespace ScreenScaling
{
/// Uses the exact factor: rounding would turn 150% into 200% and make the window larger than many
/// screens. Call this before the application object is created.
inline void use()
{
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

/// Call this right after the application object is created, with the same arguments.
///
/// For an X server without a setting of its own, Qt computes the factor from the screen's size in
/// millimetres and may arrive at 1.001 or 1.04 instead of 1; lines one pixel wide then disappear.
/// Such a factor is rounded. The program restarts itself for this, because Qt accepts another
/// rounding policy only before the first screen exists.
void roundIfMeasured(std::vector<char*> arguments);
} // namespace ScreenScaling
