#include "diffcommand.h"

#include "CBGenerator/structsettings.h"
#include "commandoptions.h"
#include "console.h"
#include "profilefile.h"
#include "profilepairs.h"
#include "profiles/profilesettings.h"
#include "schemafile.h"
#include "settingsview.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
using Differences = QList<SettingsView::Difference>;

/// What differs between two files: pairs whose settings differ, and profiles without a partner.
struct Result
{
    struct Entry
    {
        ProfilePairs::Pair pair;
        Differences differences;
    };
    Differences global;
    QList<Entry> entries;

    bool isEmpty() const { return global.isEmpty() && entries.isEmpty(); }
};

Result compare(const ProfileFile& left, const ProfileFile& right)
{
    Result result;
    if (left.globalSettings() != nullptr && right.globalSettings() != nullptr) {
        result.global = SettingsView::differences(*left.globalSettings(), *right.globalSettings());
    }
    const QList<const ProfileSettings*> lefts = left.profiles();
    const QList<const ProfileSettings*> rights = right.profiles();
    for (const ProfilePairs::Pair& pair : ProfilePairs::find(lefts, rights)) {
        const bool isPair = pair.left >= 0 && pair.right >= 0;
        const Differences found = isPair
                                      ? SettingsView::differences(*lefts.at(pair.left)->settings,
                                                                  *rights.at(pair.right)->settings)
                                      : Differences();
        if (!isPair || !found.isEmpty()) {
            result.entries.append({pair, found});
        }
    }
    return result;
}

void printDifferences(const Differences& differences)
{
    for (const SettingsView::Difference& difference : differences) {
        writeOutput(QStringLiteral("  ") + SettingsView::describe(difference));
    }
}

void printText(const ProfileFile& left, const ProfileFile& right, const Result& result)
{
    if (!result.global.isEmpty()) {
        writeOutput(left.globalSettings()->getDescriptiveName());
        printDifferences(result.global);
    }
    for (const Result::Entry& entry : result.entries) {
        const ProfilePairs::Pair pair = entry.pair;
        if (pair.left < 0 || pair.right < 0) {
            const ProfileFile& file = pair.left < 0 ? right : left;
            const int index = qMax(pair.left, pair.right);
            writeOutput(QStringLiteral("only in ") + file.path() + QStringLiteral(": ")
                        + ProfileFile::describe(index, *file.profiles().at(index)));
            continue;
        }
        QString line = ProfileFile::describe(pair.left, *left.profiles().at(pair.left));
        if (pair.left != pair.right) {
            line += QStringLiteral(" -> profile %1").arg(pair.right + 1);
        }
        writeOutput(line);
        printDifferences(entry.differences);
    }
}

QJsonArray jsonOf(const Differences& differences)
{
    QJsonArray array;
    for (const SettingsView::Difference& difference : differences) {
        array.append(SettingsView::json(difference));
    }
    return array;
}

QJsonValue numberOf(int index)
{
    return index < 0 ? QJsonValue() : QJsonValue(index + 1);
}

QJsonObject jsonOf(const ProfileFile& left, const ProfileFile& right, const Result& result)
{
    QJsonArray profiles;
    for (const Result::Entry& entry : result.entries) {
        const ProfileSettings* profile = entry.pair.left < 0 ? right.profiles().at(entry.pair.right)
                                                             : left.profiles().at(entry.pair.left);
        profiles.append(QJsonObject{{QStringLiteral("left"), numberOf(entry.pair.left)},
                                    {QStringLiteral("right"), numberOf(entry.pair.right)},
                                    {QStringLiteral("title"), profile->getTitle()},
                                    {QStringLiteral("chemistry"), profile->chemistry},
                                    {QStringLiteral("differences"), jsonOf(entry.differences)}});
    }
    return {{QStringLiteral("left"), left.path()},
            {QStringLiteral("right"), right.path()},
            {QStringLiteral("same"), result.isEmpty()},
            {QStringLiteral("global"), jsonOf(result.global)},
            {QStringLiteral("profiles"), profiles}};
}
} // namespace

ExitCode DiffCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(), QStringLiteral("Compares two files of profiles, XML or HEX, setting by setting, as "
                               "the editor would import them."));
    SchemaFile::addOptions(options);
    options.addJsonOption();
    options.addFileArgument(QStringLiteral("LEFT"), QStringLiteral("XML or HEX."));
    options.addFileArgument(QStringLiteral("RIGHT"), QStringLiteral("XML or HEX."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileFile left(options.files().at(0), schema.generator());
    ProfileFile right(options.files().at(1), schema.generator());
    ExitCode code = ExitCode::Ok;
    for (ProfileFile* file : {&left, &right}) {
        code = qMax(code, file->read());
        printMessages(file->path(), file->messages());
    }
    if (code == ExitCode::NotReadable || !left.isUsable() || !right.isUsable()) {
        return code;
    }
    const Result result = compare(left, right);
    if (options.isJson()) {
        writeJson(QJsonDocument(jsonOf(left, right, result)));
    } else {
        printText(left, right, result);
    }
    return result.isEmpty() ? code : ExitCode::ProblemsFound;
}
