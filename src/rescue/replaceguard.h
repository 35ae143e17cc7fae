#pragma once

#include <functional>

/// Asked before a file or the charger replaces the profile list, while the list still stands: it
/// saves a copy. False keeps the list, and nothing is imported.
using ReplaceGuard = std::function<bool()>;
