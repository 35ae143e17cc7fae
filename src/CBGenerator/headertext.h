#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace HParser
{
/// The text of a schema header, split into the start address, the structs with their member lines, and
/// all other lines. Blank lines are dropped.
class HeaderText
{
public:
    struct Line
    {
        int number = 0; ///< in the file, counted from 1
        QString text;
    };

    struct Struct
    {
        Line header;
        QString title;
        bool isGlobal = false;
        QVector<Line> members;
        bool isClosed = false; ///< false if the next struct or the end of the text came first
    };

    struct StartAddress
    {
        Line line;
        QString word;             ///< the last word of the line
        std::optional<int> value; ///< empty if the word is not a C integer
    };

    /// Splits a text without carriage returns, as read by TextFile. Its first line has the number
    /// `firstLine`.
    ///
    /// A struct ends with a line that has nothing but a brace. "};" and the header of another struct
    /// also end it, but count as its last member, which StructSetting cannot parse.
    explicit HeaderText(const QString& text, int firstLine = 1);

    /// Returns the first line that defines it; nothing if there is none.
    const std::optional<StartAddress>& startAddress() const { return address; }

    const QVector<Struct>& structs() const { return allStructs; }

    /// Returns the lines outside the structs, including that of the start address.
    const QVector<Line>& otherLines() const { return others; }

    /// Returns the number of the last line, which is empty if the text ends with a line feed.
    int lastLine() const { return last; }

    /// Returns true if the line opens a struct of settings.
    static bool opensStruct(const QString& line);

private:
    void addLine(const Line& line);

    std::optional<StartAddress> address;
    QVector<Struct> allStructs;
    QVector<Line> others;
    int last = 0;
    bool isInside = false; ///< the last struct is still open
};
} // namespace HParser
