#pragma once

#include "schemareview/headerreview.h"
#include "support/printing.h"

#include <algorithm>

/// A small valid header, and what the review finds in it after a line was changed.
namespace ReviewedHeader
{
inline const QStringList soundHeader = {
    /* 1 */ "#define PROFILESTARTADDRESS 0x400",
    /* 2 */ "struct Global { // Settings : \"Global\", global",
    /* 3 */ "unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", A, 1, -1, basic",
    /* 4 */ "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", A, 0, -1, basic",
    /* 5 */ "}",
    /* 6 */ "struct Cell { // Settings : \"Cell\", instantiable",
    /* 7 */ "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", A, 2, -1, basic",
    /* 8 */ "char title[8]; // string, auto, \"Title\", A, \"one\", 0, basic",
    /* 9 */ "char subtitle[8]; // string, auto, \"Subtitle\", A, \"two\", 1, basic",
    /* 10 */ "unsigned char active; // bool, 1, \"active\", A, 0, -1, basic",
    /* 11 */ "unsigned char isDefault; // bool, 1, \"default\", A, 0, -1, basic",
    /* 12 */ "unsigned char modifiable; // bool, 6, \"modifiable\", A, 1, -1, basic",
    /* 13 */ "unsigned char low; // num, auto, 0, 9, x1, 0, \"Low\", \"V\", A, 3, 2, basic",
    /* 14 */
    "unsigned char high; // num, auto, low, 9, x1, 0, \"High\", \"V\", A, low + 1, 3, basic",
    /* 15 */ "char mode[5]; // list, auto, \"Mode\", A, \"Off\", 4, \"On\", \"Off\", basic",
    /* 16 */ "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", A, 0, -1, basic",
    /* 17 */ "}"};

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

/// "LINE:COLUMN SEVERITY TEXT | ADVICE" of each problem.
inline QStringList reviewed(const QStringList& lines)
{
    QStringList texts;
    for (const Problem& problem : HParser::HeaderReview::problems(lines.join('\n') + '\n')) {
        texts.append(QString("%1:%2 ").arg(problem.line).arg(problem.column) + severityWord(problem)
                     + ' ' + problem.text + " | " + problem.advice);
    }
    return texts;
}

/// The valid header with one text of a line replaced.
inline QStringList with(int line, const QString& before, const QString& after)
{
    QStringList lines = soundHeader;
    EXPECT_TRUE(contains(lines.at(line - 1), before)) << line;
    lines[line - 1].replace(before, after);
    return lines;
}

inline QStringList without(int line)
{
    QStringList lines = soundHeader;
    lines[line - 1].clear();
    return lines;
}

inline QStringList withAnother(int line, const QString& text)
{
    QStringList lines = soundHeader;
    lines.insert(line - 1, text);
    return lines;
}

/// "13@Low@ error" is "13:COLUMN error", with the column where line 13 has "Low".
inline QString withColumn(const QStringList& header, const QString& beginning)
{
    const QStringList parts = beginning.split('@');
    if (parts.size() != 3) {
        return beginning;
    }
    const int column = header.value(parts.at(0).toInt() - 1).indexOf(parts.at(1)) + 1;
    EXPECT_GT(column, 0) << beginning;
    return QString("%1:%2").arg(parts.at(0)).arg(column) + parts.at(2);
}

/// Expects a problem that begins so and holds the other text.
inline void expectProblem(const QStringList& header, const QString& place, const QString& part = {})
{
    const QStringList found = reviewed(header);
    const QString beginning = withColumn(header, place);
    const bool isFound = std::any_of(found.begin(), found.end(), [&](const QString& text) {
        return text.startsWith(beginning) && text.contains(part);
    });
    EXPECT_TRUE(isFound) << beginning << " ... " << part << "\namong\n" << found.join('\n');
}

/// The same, but it must be the only one.
inline void expectOnly(const QStringList& header, const QString& beginning,
                       const QString& part = {})
{
    expectProblem(header, beginning, part);
    EXPECT_EQ(reviewed(header).size(), 1) << reviewed(header).join('\n');
}
} // namespace ReviewedHeader
