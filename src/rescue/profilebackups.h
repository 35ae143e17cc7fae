#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

/// Keeps dated copies of the profile list, the newest 20, as profile files in a folder of their own.
///
/// A copy is named after the time and the occasion: "profiles_2026-03-14_15-09-26_written.xml". Other
/// files in the folder are never touched, and no old copy is deleted unless a new one was written.
class ProfileBackups : public QObject
{
    Q_OBJECT

public:
    /// The event for which a copy is kept: what has happened to the list, or is about to happen.
    enum class Occasion
    {
        WRITTEN,  ///< to the charger
        READ,     ///< from the charger
        REPLACED, ///< by a file or by the charger's profiles
        DELETED,  ///< with "Delete all"
        RELOADED  ///< for a newer bundle
    };

    /// Returns the list as the text of a profile file; empty for an empty list.
    using Document = std::function<QString()>;

    /// How many copies are kept.
    static constexpr int mostCopies = 20;

    /// `backupFolder` is created with the first copy. The names of copies begin with `fileName`,
    /// which is different for each editor in one folder ("profiles", "profiles_2").
    ProfileBackups(Document profileFile, const QString& backupFolder, const QString& fileName,
                   QObject* parent);

    /// Returns the current list, to be kept later.
    QString current() const { return document(); }

    /// Keeps a copy of the current list. Returns false and emits notKept() if it could not be
    /// written. An empty list, and one that is the newest copy already, count as kept.
    bool keep(Occasion occasion);

    /// The same for a list taken earlier with document().
    bool keep(Occasion occasion, const QString& profileFile);

signals:
    /// Emitted when a copy could not be written. `text` is a message for the user.
    void notKept(const QString& text);

private:
    QStringList copies() const;
    QString newPath(Occasion occasion) const;
    void deleteOldest(const QString& newest) const;

    Document document;
    QString folder;
    QString name;
};
