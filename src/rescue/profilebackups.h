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
    /// What happened to the list that is kept, or is about to happen to it.
    enum class Occasion
    {
        WRITTEN,  ///< to the charger
        READ,     ///< from the charger
        REPLACED, ///< by a file or by what the charger holds
        DELETED,  ///< with "Delete all"
        RELOADED  ///< against a newer bundle
    };

    /// The text of a profile file that holds the list; empty for an empty list.
    using Document = std::function<QString()>;

    /// How many copies are kept.
    static constexpr int mostCopies = 20;

    /// `backupFolder` is made when the first copy is. The names of copies begin with `fileName`, by which
    /// the editors in one folder are told apart ("profiles", "profiles_2").
    ProfileBackups(Document profileFile, const QString& backupFolder, const QString& fileName,
                   QObject* parent);

    /// The list of this moment, to be kept later.
    QString current() const { return document(); }

    /// Keeps the list of this moment. Returns false and emits notKept() when it could not be written. An
    /// empty list, and one that is the newest copy already, count as kept.
    bool keep(Occasion occasion);

    /// The same with a list of an earlier moment.
    bool keep(Occasion occasion, const QString& profileFile);

signals:
    /// A copy could not be written. `text` says so to the user.
    void notKept(const QString& text);

private:
    QStringList copies() const;
    QString newPath(Occasion occasion) const;
    void deleteOldest(const QString& newest) const;

    Document document;
    QString folder;
    QString name;
};
