#include "checkcommand.h"

#include "checkedfile.h"
#include "commandoptions.h"
#include "console.h"
#include "problemreport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
void printProblems(const CheckedFile& file)
{
    for (const Problem& problem : file.problems()) {
        for (const QString& line : ProblemReport::lines(file.path(), problem)) {
            writeOutput(line);
        }
    }
    writeOutput(file.path() + QStringLiteral(": ") + ProblemReport::summary(file.problems()));
}

QJsonObject jsonOf(const CheckedFile& file)
{
    QJsonObject object{{QStringLiteral("file"), file.path()}};
    if (file.isRead()) {
        object.insert(QStringLiteral("kind"),
                      file.isBundle() ? QStringLiteral("bundle") : QStringLiteral("header"));
        object.insert(QStringLiteral("problems"), ProblemReport::json(file.problems()));
        object.insert(QStringLiteral("errors"), ProblemReport::errors(file.problems()));
        object.insert(QStringLiteral("warnings"), ProblemReport::warnings(file.problems()));
    }
    object.insert(QStringLiteral("read"), file.isRead());
    return object;
}
} // namespace

ExitCode CheckCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        commandName,
        QStringLiteral(
            "Finds every problem of bundles (*.kelvaron) and settings headers and says what to "
            "write instead, as FILE:LINE:COLUMN: error: TEXT. Errors mean that values or settings "
            "are lost or that the editor cannot start; warnings do not affect the exit code."));
    options.addJsonOption();
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("A bundle or a header."),
                            CommandOptions::Repeat::Any);
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    ExitCode code = ExitCode::Ok;
    QJsonArray results;
    for (const QString& path : options.files()) {
        const CheckedFile file(path);
        if (!file.isRead()) {
            code = ExitCode::NotReadable;
        } else if (ProblemReport::errors(file.problems()) > 0 && code == ExitCode::Ok) {
            code = ExitCode::ProblemsFound;
        }
        if (options.isJson()) {
            results.append(jsonOf(file));
        } else if (file.isRead()) {
            printProblems(file);
        }
    }
    if (options.isJson()) {
        writeJson(QJsonDocument(QJsonObject{{QStringLiteral("files"), results}}));
    }
    return code;
}
