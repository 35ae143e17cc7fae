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

/// Collects the differences between a file and what was imported: settings that the schema does not
/// know or that are missing in the file, and values that a setting does not allow.
class ImportReport
{
public:
    /// Checks one profile. `properties` are the file's texts by tag, `settings` are the values that
    /// were imported.
    void examine(const QString& profileName, const QMap<QString, QString>& properties,
                 const HParser::StructSettings& settings);

    bool isEmpty() const { return changes.isEmpty(); }
    void clear();

    /// Returns one line per change, all of them, without the profiles concerned.
    QStringList lines() const;

    /// Returns one line per change with the profiles concerned, shortened to fit a message box.
    QString text() const;

private:
    struct Change
    {
        QString what;
        QStringList firstProfiles; ///< only as many as are named
        int numProfiles;
    };

    void add(const QString& what, const QString& profileName);
    void examineUnknown(const QString& profileName, const QMap<QString, QString>& properties,
                        const HParser::StructSettings& settings);

    QList<Change> changes;
    QHash<QString, int> indexOfChange; ///< by the change; a hostile file may cause very many
};
