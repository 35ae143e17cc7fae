#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class QListWidget;

/// Saves the profile list when the program ends unexpectedly: as its last step after a fatal
/// assertion, or when a signal ends it (see CrashRescue).
///
/// A copy of the list is kept ready for signals; it is renewed shortly after each change and after
/// each key or mouse button.
class ProfileRescue : public QObject
{
    Q_OBJECT

public:
    using Document = std::function<QString()>;

    /// `profileList` is borrowed; `profileFile` returns the list as the text of a profile file.
    /// Files are written to `rescueFolder`, or to the system's temporary folder if that fails.
    /// Their names begin with `fileName`.
    ProfileRescue(QListWidget* profileList, Document profileFile, const QString& rescueFolder,
                  const QString& fileName, QObject* parent);
    ~ProfileRescue() override;

    /// Saves the list before the program ends, under a name with date and time, and prints the
    /// path. Returns the path; empty if there was nothing to save or saving failed.
    QString save();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Emitted when the copy for signals was renewed: the text of a profile file, empty for an
    /// empty list.
    void copyKept(const QByteArray& copy);

private:
    void keepCopy();
    QString newPath(const QString& place) const;

    QListWidget* list;
    Document document;
    QString folder;
    QString name;
    QTimer copyTimer;
    bool isLastWord = false; ///< the list has been saved and the program is ending
};
