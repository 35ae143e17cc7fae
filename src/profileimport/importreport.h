#pragma once

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

/// Collects what an import could not take over as the file has it: settings that the schema does not
/// know or that the file lacks, and values that a setting does not allow.
class ImportReport
{
public:
    /// Looks through one profile. `properties` are the file's texts by tag, `settings` holds what
    /// was made of them.
    void examine(const QString& profileName, const QMap<QString, QString>& properties,
                 const HParser::StructSettings& settings);

    bool isEmpty() const { return changes.isEmpty(); }
    void clear();

    /// A line for each change without the profiles; all of them.
    QStringList lines() const;

    /// A line for each change with the profiles that it concerns, shortened to fit a message box.
    QString text() const;

private:
    struct Change
    {
        QString what;
        QStringList firstProfiles; ///< as many as are named
        int numProfiles;
    };

    void add(const QString& what, const QString& profileName);
    void examineUnknown(const QString& profileName, const QMap<QString, QString>& properties,
                        const HParser::StructSettings& settings);

    QList<Change> changes;
    QHash<QString, int> indexOfChange; ///< by what changed; a hostile file may hold very many
};
