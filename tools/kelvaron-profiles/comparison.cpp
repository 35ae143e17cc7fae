#include "comparison.h"

#include "CBGenerator/structsettings.h"
#include "console.h"
#include "profilefile.h"
#include "profiles/profilesettings.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

using Differences = QList<SettingsView::Difference>;

namespace
{
void printDifferences(const Differences& differences)
{
    for (const SettingsView::Difference& difference : differences) {
        writeOutput(QStringLiteral("  ") + SettingsView::describe(difference));
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
} // namespace

Comparison::Comparison(const ProfileFile& leftFile, const ProfileFile& rightFile)
    : left(leftFile), right(rightFile)
{
    if (left.globalSettings() != nullptr && right.globalSettings() != nullptr) {
        global = SettingsView::differences(*left.globalSettings(), *right.globalSettings());
    }
    const QList<const ProfileSettings*> lefts = left.profiles();
    const QList<const ProfileSettings*> rights = right.profiles();
    for (const ProfilePairs::Pair& pair : ProfilePairs::find(lefts, rights)) {
        const bool isPair = pair.left >= 0 && pair.right >= 0;
        const Differences found = isPair
                                      ? SettingsView::differences(*lefts.at(pair.left)->settings,
                                                                  *rights.at(pair.right)->settings)
                                      : Differences();
        entries.append({pair, found});
    }
}

bool Comparison::isSame() const
{
    return global.isEmpty() && std::all_of(entries.begin(), entries.end(), [](const Entry& entry) {
               return entry.isSame();
           });
}

void Comparison::print() const
{
    if (!global.isEmpty()) {
        writeOutput(left.globalSettings()->getDescriptiveName());
        printDifferences(global);
    }
    for (const Entry& entry : entries) {
        if (entry.isSame()) {
            continue;
        }
        const ProfilePairs::Pair pair = entry.pair;
        if (pair.left < 0 || pair.right < 0) {
            const ProfileFile& file = pair.left < 0 ? right : left;
            const int index = qMax(pair.left, pair.right);
            writeOutput(QStringLiteral("only in ") + file.name() + QStringLiteral(": ")
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

QJsonObject Comparison::json() const
{
    QJsonArray profiles;
    for (const Entry& entry : entries) {
        if (entry.isSame()) {
            continue;
        }
        const ProfileSettings* profile = entry.pair.left < 0 ? right.profiles().at(entry.pair.right)
                                                             : left.profiles().at(entry.pair.left);
        profiles.append(QJsonObject{{QStringLiteral("left"), numberOf(entry.pair.left)},
                                    {QStringLiteral("right"), numberOf(entry.pair.right)},
                                    {QStringLiteral("title"), profile->getTitle()},
                                    {QStringLiteral("chemistry"), profile->chemistry},
                                    {QStringLiteral("differences"), jsonOf(entry.differences)}});
    }
    return {{QStringLiteral("left"), left.name()},
            {QStringLiteral("right"), right.name()},
            {QStringLiteral("same"), isSame()},
            {QStringLiteral("global"), jsonOf(global)},
            {QStringLiteral("profiles"), profiles}};
}
