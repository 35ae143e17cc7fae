#pragma once

#include <QString>

namespace HParser
{
/// A line that opens a struct of settings, piece by piece:
///
///     struct NAME { // Settings : "Title", instantiable
class StructHeaderLine
{
public:
    explicit StructHeaderLine(const QString& line);

    /// True when the line opens a struct.
    bool isSound() const { return sound; }

    /// What is missing first: "a name", or the piece itself, several between " or "; "the end of the
    /// line" for a sound one.
    QString expected() const { return expectedPiece; }

    /// Where it should be: behind the piece before it and all blanks, counted from 0. Of a title the
    /// first character that it may not hold.
    int position() const { return place; }

    QString title() const { return titleText; }
    bool isGlobal() const { return global; }

private:
    QString titleText;
    QString expectedPiece;
    int place = 0;
    bool sound = false;
    bool global = false;
};
} // namespace HParser
