#pragma once

#include <QGuiApplication>

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
} // namespace ScreenScaling
