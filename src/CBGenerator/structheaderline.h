#pragma once

#include <QString>

namespace HParser
{
/// A line that opens a struct of settings, matched piece by piece:
///
///     struct NAME { // Settings : "Title", instantiable
class StructHeaderLine
{
public:
    explicit StructHeaderLine(const QString& line);

    /// Returns true if the line opens a struct.
    bool isSound() const { return sound; }

    /// Returns the first piece that does not match: its text, alternatives separated by " or ", or a
    /// description such as "a name". REQUIRES: a line that is not sound.
    QString expected() const { return expectedPiece; }

    /// Returns the position of the first character that does not match, counted from 0.
    int position() const { return place; }

    QString title() const { return titleText; }
    bool isGlobal() const { return global; }

private:
    bool readText(const QString& line, const char* text, const char* description = nullptr);
    bool readName(const QString& line);
    bool parseStructDescriptiveName(const QString& line);
    bool parseIsGlobal(const QString& line);
    bool readEnd(const QString& line);

    QString titleText;
    QString expectedPiece;
    int place = 0;
    bool sound = false;
    bool global = false;
};
} // namespace HParser
