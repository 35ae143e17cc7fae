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
    enum Part
    {
        StructWord,
        Name,
        Brace,
        CommentMark,
        SettingsWord,
        Colon,
        OpeningQuote,
        Title, ///< letters, digits, underscores and blanks, and the closing quote
        Comma,
        Kind, ///< "global" or "instantiable"
        End   ///< of the line
    };

    explicit StructHeaderLine(const QString& line);

    /// True when the line opens a struct.
    bool isSound() const { return sound; }

    /// The first part that is not there; `End` for a sound line.
    Part lastPart() const { return part; }

    /// Where that part should be: behind the part before it and all blanks, counted from 0. Of a title
    /// the first character that it may not hold.
    int position() const { return place; }

    QString title() const { return titleText; }
    bool isGlobal() const { return global; }

private:
    QString titleText;
    Part part = StructWord;
    int place = 0;
    bool sound = false;
    bool global = false;
};
} // namespace HParser
