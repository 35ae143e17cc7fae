#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace HParser
{
/// The text of a schema header, cut into the start address, the structs with their member lines, and
/// all other lines. Blank lines are left out.
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
        QList<Line> members;
        bool isClosed = false; ///< before the next struct or the end of the text
    };

    struct StartAddress
    {
        Line line;
        QString word; ///< the last one of the line
        std::optional<int> value;
    };

    /// Cuts a text without carriage returns (what TextFile reads), whose lines are counted from
    /// `firstLine`.
    ///
    /// A struct ends at a brace alone on its line. "};" and the header of another struct end it too,
    /// but are its last member: no setting can be made of them.
    explicit HeaderText(const QString& text, int firstLine = 1);

    /// The first line that defines it; nothing when there is none.
    const std::optional<StartAddress>& startAddress() const { return address; }

    const QList<Struct>& structs() const { return allStructs; }

    /// The lines outside the structs, that of the start address included.
    const QList<Line>& otherLines() const { return others; }

    /// The number of the text's last line, which is empty behind a line feed.
    int lastLine() const { return last; }

    /// True for a line that opens a struct of settings.
    static bool opensStruct(const QString& line);

private:
    void addLine(const Line& line);

    std::optional<StartAddress> address;
    QList<Struct> allStructs;
    QList<Line> others;
    int last = 0;
    bool isInside = false; ///< the last struct is open
};
} // namespace HParser
