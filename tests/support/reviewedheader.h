#pragma once

#include "schemareview/headerreview.h"
#include "support/printing.h"

#include <algorithm>

/// A small valid header, and what the review finds in it after a line was changed.
namespace ReviewedHeader
{
/// The lines of the valid header by what they hold; the first line is line 1.
enum Line
{
    Address = 1,
    Global,
    GlobalType,
    GlobalSum,
    GlobalEnd,
    Cell,
    Type,
    Title,
    Subtitle,
    Active,
    Default,
    Modifiable,
    Low,
    High,
    Mode,
    Sum,
    CellEnd
};

inline const QStringList soundHeader = {
    "#define PROFILESTARTADDRESS 0x400",
    "struct Global { // Settings : \"Global\", global",
    "unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", A, 1, -1, basic",
    "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", A, 0, -1, basic",
    "}",
    "struct Cell { // Settings : \"Cell\", instantiable",
    "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", A, 2, -1, basic",
    "char title[8]; // string, auto, \"Title\", A, \"one\", 0, basic",
    "char subtitle[8]; // string, auto, \"Subtitle\", A, \"two\", 1, basic",
    "unsigned char active; // bool, 1, \"active\", A, 0, -1, basic",
    "unsigned char isDefault; // bool, 1, \"default\", A, 0, -1, basic",
    "unsigned char modifiable; // bool, 6, \"modifiable\", A, 1, -1, basic",
    "unsigned char low; // num, auto, 0, 9, x1, 0, \"Low\", \"V\", A, 3, 2, basic",
    "unsigned char high; // num, auto, low, 9, x1, 0, \"High\", \"V\", A, low + 1, 3, basic",
    "char mode[5]; // list, auto, \"Mode\", A, \"Off\", 4, \"On\", \"Off\", basic",
    "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", A, 0, -1, basic",
    "}"};

inline QString severityWord(const Problem& problem)
{
    switch (problem.severity) {
    case Problem::Severity::Warning:
        return "warning";
    case Problem::Severity::Error:
        return "error";
    case Problem::Severity::Fatal:
        break;
    }
    return "fatal";
}

/// "SEVERITY TEXT | ADVICE"
inline QString textOf(const Problem& problem)
{
    return severityWord(problem) + ' ' + problem.text + " | " + problem.advice;
}

inline Problems problemsOf(const QStringList& header)
{
    return HParser::HeaderReview::problems(header.join('\n') + '\n');
}

/// "LINE:COLUMN SEVERITY TEXT | ADVICE" of each problem.
inline QStringList reviewed(const QStringList& header)
{
    QStringList texts;
    for (const Problem& problem : problemsOf(header)) {
        texts.append(QString("%1:%2 ").arg(problem.line).arg(problem.column) + textOf(problem));
    }
    return texts;
}

/// Replaces one text of a line, which must hold it.
inline void replaceIn(QStringList& header, int line, const QString& before, const QString& after)
{
    EXPECT_TRUE(contains(header.at(line - 1), before)) << line;
    header[line - 1].replace(before, after);
}

/// The valid header with one text of a line replaced.
inline QStringList with(int line, const QString& before, const QString& after)
{
    QStringList header = soundHeader;
    replaceIn(header, line, before, after);
    return header;
}

/// The valid header with an empty line in the place of one.
inline QStringList without(int line)
{
    QStringList header = soundHeader;
    header[line - 1].clear();
    return header;
}

/// The valid header with a text in the place of a line, which moves down with all that follow.
inline QStringList withAnother(int line, const QString& text)
{
    QStringList header = soundHeader;
    header.insert(line - 1, text);
    return header;
}

/// Where a problem is: anywhere in a line, or there in a column, or there where a text begins.
struct Place
{
    int line;
    int column = -1;
    QString text = {};
};

inline Place at(int line, int column = -1)
{
    return {line, column};
}
inline Place at(int line, const QString& text)
{
    return {line, -1, text};
}

/// Returns whether a problem of the header is in that place and its text begins so and holds the part.
inline bool isProblem(const Problem& problem, const QStringList& header, const Place& place,
                      const QString& beginning, const QString& part = {})
{
    const int column =
        place.text.isEmpty() ? place.column : header.value(place.line - 1).indexOf(place.text) + 1;
    const QString text = textOf(problem);
    return problem.line == place.line && (column < 0 || problem.column == column)
           && text.startsWith(beginning) && text.contains(part);
}

/// Expects a problem in that place whose text begins so, from the severity on, and holds the part.
inline void expectProblem(const QStringList& header, const Place& place, const QString& beginning,
                          const QString& part = {})
{
    EXPECT_TRUE(contains(header.value(place.line - 1), place.text));
    const Problems found = problemsOf(header);
    const bool isFound = std::any_of(found.begin(), found.end(), [&](const Problem& problem) {
        return isProblem(problem, header, place, beginning, part);
    });
    EXPECT_TRUE(isFound) << "line " << place.line << ", column " << place.column << ", \""
                         << place.text << "\": " << beginning << " ... " << part << "\namong\n"
                         << reviewed(header).join('\n');
}

/// The same, but it must be the only one.
inline void expectOnly(const QStringList& header, const Place& place, const QString& beginning,
                       const QString& part = {})
{
    expectProblem(header, place, beginning, part);
    EXPECT_EQ(reviewed(header).size(), 1) << reviewed(header).join('\n');
}
} // namespace ReviewedHeader
