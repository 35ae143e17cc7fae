#include "problemreport.h"

#include "base/countedtext.h"
#include "console.h"

#include <QJsonObject>

#include <algorithm>

namespace
{
QString severityWord(const Problem& problem)
{
    return problem.severity == Problem::Severity::Warning ? QStringLiteral("warning")
                                                          : QStringLiteral("error");
}
} // namespace

QStringList ProblemReport::lines(const QString& file, const Problem& problem)
{
    QString place = file;
    for (const int number : {problem.line, problem.line > 0 ? problem.column : 0}) {
        if (number > 0) {
            place += QStringLiteral(":%1").arg(number);
        }
    }
    // By concatenation, because texts of the file may look like place markers.
    QStringList list{place + QStringLiteral(": ") + severityWord(problem) + QStringLiteral(": ")
                     + problem.text};
    if (!problem.advice.isEmpty()) {
        list.append(place + QStringLiteral(": note: write ") + problem.advice);
    }
    return list;
}

QJsonArray ProblemReport::json(const Problems& problems)
{
    QJsonArray array;
    for (const Problem& problem : problems) {
        array.append(
            QJsonObject{{QStringLiteral("line"), problem.line},
                        {QStringLiteral("column"), problem.column},
                        {QStringLiteral("severity"), severityWord(problem)},
                        {QStringLiteral("fatal"), problem.severity == Problem::Severity::Fatal},
                        {QStringLiteral("text"), problem.text},
                        {QStringLiteral("write"), problem.advice}});
    }
    return array;
}

int ProblemReport::errors(const Problems& problems)
{
    return problems.size() - warnings(problems);
}

int ProblemReport::warnings(const Problems& problems)
{
    return static_cast<int>(
        std::count_if(problems.begin(), problems.end(), [](const Problem& problem) {
            return problem.severity == Problem::Severity::Warning;
        }));
}

void ProblemReport::printProblems(const QString& file, const Problems& problems)
{
    for (const Problem& problem : problems) {
        for (const QString& line : lines(file, problem)) {
            printErrorLine(line);
        }
    }
}

QString ProblemReport::summary(const Problems& problems)
{
    if (problems.isEmpty()) {
        return QStringLiteral("no problems found");
    }
    return countedText(errors(problems), QStringLiteral("error"), QStringLiteral("errors"))
           + QStringLiteral(", ")
           + countedText(warnings(problems), QStringLiteral("warning"), QStringLiteral("warnings"));
}
