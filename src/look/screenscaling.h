#pragma once

#include <QGuiApplication>

#include <vector>

/// How the program follows the scale factor of a screen.
namespace ScreenScaling
{
/// Takes the factor as it is: rounded, 150% would become 200% and the window larger than many
/// screens. To be called before the application object is made.
inline void use()
{
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

/// To be called right after the application object was made, with the arguments that it was given.
///
/// An X server without a setting of its own is measured in millimetres, and comes out at 1.001 or 1.04
/// instead of 1: lines of a pixel then get lost. Such a factor is rounded: the program starts itself
/// anew, for Qt takes another rule only before the first screen.
void roundIfMeasured(std::vector<char*> arguments);
} // namespace ScreenScaling
