#pragma once

#include <QString>

/// Tells a fatal assertion what the program was working on.
///
/// An object on the stack counts while it lives; contexts nest. Used on the GUI thread only.
class FatalContext
{
public:
    FatalContext(const FatalContext&) = delete;
    FatalContext& operator=(const FatalContext&) = delete;

    /// The descriptions of all living contexts, outermost first, a line each.
    static QString describeAll();

    /// The outermost file that a living context blames: what came out of it can only be mended
    /// there. Empty when there is none.
    static QString blamedFile();

protected:
    FatalContext();
    virtual ~FatalContext();

    /// One line for the reader of the failure: what was being worked on.
    virtual QString describe() const = 0;

    /// The installed file that is at fault if something fails here; empty for none.
    virtual QString file() const { return {}; }

private:
    FatalContext* outer = nullptr;
};
