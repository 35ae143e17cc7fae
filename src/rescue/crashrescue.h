#pragma once

class QByteArray;
class QString;

/// Saves the user's work when a signal ends the process: a crash, or a termination request by the
/// system.
///
/// A signal handler may call very few functions. So the bytes and the name of their file are
/// prepared in advance; the handler only writes them and prints the path to standard output. Does
/// nothing on systems without such signals.
namespace CrashRescue
{
/// Installs the signal handlers: they write the kept bytes, then the signal has its usual effect.
/// Signals that are already ignored stay ignored. Further calls do nothing.
void install();

/// Keeps these bytes for the handler to write, in place of those kept before. The file must not
/// exist yet.
void keep(const QString& absolutePath, const QByteArray& bytes);

/// Discards the kept bytes; the handler then writes nothing.
void forget();
} // namespace CrashRescue
