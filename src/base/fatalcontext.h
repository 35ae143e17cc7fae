#pragma once

#include <QString>

/// Describes what the program is working on, for the report of a fatal assertion.
///
/// A context is active while the object, on the stack, exists; contexts nest. Used on the GUI
/// thread only.
class FatalContext
{
public:
    FatalContext(const FatalContext&) = delete;
    FatalContext& operator=(const FatalContext&) = delete;

    /// Returns the descriptions of all active contexts, outermost first, one per line.
    static QString describeAll();

    /// The outermost file named by an active context; whatever was read from it has to be fixed
    /// there. Empty if no context names a file.
    static QString blamedFile();

protected:
    FatalContext();
    virtual ~FatalContext();

    /// Describes in one line what the program is working on.
    virtual QString describe() const = 0;

    /// The installed file that is at fault if something fails in this context; empty if there is
    /// none.
    virtual QString file() const { return {}; }

private:
    FatalContext* outer = nullptr;
};
