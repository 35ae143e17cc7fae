#pragma once

#include <QLatin1String>
#include <QStringList>

namespace HParser
{
class StructSettings;

/// The conventions that a chemistry must follow to serve as a profile.
namespace ProfileConventions
{
/// The names of settings that the editor itself knows.
inline constexpr QLatin1String type("type");
inline constexpr QLatin1String checksum("checksum");
inline constexpr QLatin1String activeFlag("active");
inline constexpr QLatin1String defaultFlag("default");
inline constexpr QLatin1String modifiableFlag("modifiable");

/// The name under which files keep a profile's chemistry beside its settings.
inline constexpr QLatin1String chemistry("chemistry");

/// The names of the flags that each chemistry has: active, default and modifiable.
QStringList flags();

/// Returns true if the struct has a flag of this name.
bool hasFlag(const StructSettings& settings, const QString& name);

/// True when the struct begins with the number by which images name it, "type".
bool hasType(const StructSettings& settings);
} // namespace ProfileConventions
} // namespace HParser
