#include "listcommand.h"

#include "commandoptions.h"
#include "console.h"
#include "inspectedbundle.h"
#include "problemreport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QString row(const QString& index, const QString& lines, const QString& bytes,
            const QString& checksum, const QString& verdict, const QString& name)
{
    return QStringLiteral("%1 %2 %3  %4  %5  %6")
        .arg(index, 7)
        .arg(lines, 6)
        .arg(bytes, 8)
        .arg(checksum, -32)
        .arg(verdict, -5)
        .arg(name);
}

void printSection(const InspectedBundle& bundle, int index)
{
    const QString text = bundle.sectionText(index);
    const bool isChecked = index < bundle.sectionCount() - 1;
    const QString verdict = bundle.isIntact(index) ? QStringLiteral("ok") : QStringLiteral("WRONG");
    writeOutput(row(QString::number(index), QString::number(text.count(QLatin1Char('\n'))),
                    QString::number(text.toUtf8().size()), KelvaronBundle::checksum(text),
                    isChecked ? verdict : QStringLiteral("-"), bundle.sectionName(index)));
}

void printText(InspectedBundle& bundle)
{
    const QMap<QString, QString> keys = bundle.keys();
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        writeOutput(QStringLiteral("%1 = %2").arg(key.key(), key.value()));
    }
    writeOutput(row(QStringLiteral("section"), QStringLiteral("lines"), QStringLiteral("bytes"),
                    QStringLiteral("checksum"), QString(), QStringLiteral("name")));
    for (int i = 0; i < bundle.sectionCount(); ++i) {
        printSection(bundle, i);
    }
}

QJsonObject jsonOf(const QString& path, InspectedBundle& bundle)
{
    QJsonObject keys;
    const QMap<QString, QString> pairs = bundle.keys();
    for (auto key = pairs.cbegin(); key != pairs.cend(); ++key) {
        keys.insert(key.key(), key.value());
    }
    QJsonArray sections;
    for (int i = 0; i < bundle.sectionCount(); ++i) {
        const QString text = bundle.sectionText(i);
        const bool isChecked = i < bundle.sectionCount() - 1;
        sections.append(QJsonObject{{QStringLiteral("index"), i},
                                    {QStringLiteral("name"), bundle.sectionName(i)},
                                    {QStringLiteral("lines"), text.count(QLatin1Char('\n'))},
                                    {QStringLiteral("bytes"), text.toUtf8().size()},
                                    {QStringLiteral("checksum"), KelvaronBundle::checksum(text)},
                                    {QStringLiteral("matches"),
                                     isChecked ? QJsonValue(bundle.isIntact(i)) : QJsonValue()}});
    }
    return {{QStringLiteral("file"), path},
            {QStringLiteral("keys"), keys},
            {QStringLiteral("sections"), sections}};
}
} // namespace

ExitCode ListCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        QStringLiteral("bundle list"),
        QStringLiteral("Shows the keys of a bundle and, for each section, its number, lines, "
                       "bytes, checksum and name. Checksums that do not match are shown, "
                       "not counted as a failure."));
    options.addJsonOption();
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("The bundle."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const QString path = options.file();
    InspectedBundle bundle(path);
    if (!bundle.readSections()) {
        printError(path, bundle.error());
        return ExitCode::ProblemsFound;
    }
    if (options.isJson()) {
        writeJson(QJsonDocument(jsonOf(path, bundle)));
    } else {
        printText(bundle);
    }
    if (KelvaronBundle::hasSoundKeyBlock(path)) {
        return ExitCode::Ok;
    }
    ProblemReport::printProblems(path, bundle.keyProblems());
    return ExitCode::ProblemsFound;
}
