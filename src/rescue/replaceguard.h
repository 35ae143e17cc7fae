#pragma once

#include <functional>

/// Called before a file or the charger replaces the profile list; saves a copy of the list. If it
/// returns false, the list is kept and nothing is imported.
using ReplaceGuard = std::function<bool()>;
