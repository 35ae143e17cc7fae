#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class QListWidget;

/// Saves the profile list when the program has to end out of turn: as its last step after a fatal
/// assertion, or when a signal ends it (see CrashRescue).
///
/// For signals a copy of the list is kept ready, made anew shortly after each change and after
/// whatever the user does.
class ProfileRescue : public QObject
{
    Q_OBJECT

public:
    using Document = std::function<QString()>;

    /// `profileList` is borrowed; `profileFile` gives the text of a profile file that holds it.
    /// Files are made in `rescueFolder`, or in the system's folder for temporary files when that
    /// one takes none. Their names begin with `fileName`.
    ProfileRescue(QListWidget* profileList, Document profileFile, const QString& rescueFolder,
                  const QString& fileName, QObject* parent);
    ~ProfileRescue() override;

    /// Saves the list under a name with date and time and prints where, before the program ends.
    /// Returns that path, empty when there was nothing to be saved or it could not be saved.
    QString save();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The copy for signals is up to date: this text of a profile file, empty for an empty list.
    void copyKept(const QByteArray& copy);

private:
    void keepCopy();
    QString newPath(const QString& place) const;

    QListWidget* list;
    Document document;
    QString folder;
    QString name;
    QTimer copyTimer;
    bool isLastWord = false; ///< the list has been saved, the program ends
};
