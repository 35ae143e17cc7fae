#pragma once

class QByteArray;
class QString;

/// Saves the user's work when a signal ends the process: a crash, or the system that asks for the
/// end.
///
/// A signal handler may do next to nothing, so the bytes and the name of their file are made ready
/// while all is well; the handler only writes them and tells where on standard output. On systems
/// without such signals nothing happens.
namespace CrashRescue
{
/// From now on these signals write what is kept, then have their usual effect. Those that are
/// ignored already stay ignored. Further calls do nothing.
void install();

/// What is to be written, in place of what was kept before. The file must not exist yet.
void keep(const QString& absolutePath, const QByteArray& bytes);

/// Nothing is to be written.
void forget();
} // namespace CrashRescue
