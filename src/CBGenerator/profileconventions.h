#pragma once

#include <QStringList>

namespace HParser
{
class StructSettings;

/// What a chemistry needs to be a profile.
namespace ProfileConventions
{
/// The names of the flags that each chemistry has: "active", "default" and "modifiable".
QStringList flags();

/// True when the struct has a flag of this name.
bool hasFlag(const StructSettings& settings, const QString& name);

/// True when the struct begins with the number by which images name it, "type".
bool hasType(const StructSettings& settings);
} // namespace ProfileConventions
} // namespace HParser
