#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

/// Describes for the status bar, in a few words, how the profile list differs from what was saved
/// and from what the charger holds.
class ListStatus : public QObject
{
    Q_OBJECT

public:
    using Document = std::function<QString()>;
    using Count = std::function<int()>;

    /// `profileFile` returns the list as the text of a profile file, `profiles` the number of
    /// profiles, and `allowed` the number that the charger takes.
    ListStatus(Document profileFile, Count profiles, Count allowed);

    /// Returns, for example, "14 profiles, the charger takes 13; changed since saved"; empty if
    /// there is nothing to report.
    QString text() const;

public slots:
    /// Records that a file, or the charger, now holds the list as it is.
    void markSaved();
    void markWritten();

    /// Call this when the list may have changed; `profileFile` is its text now.
    void update(const QByteArray& profileFile);

signals:
    /// Emitted when text() may have changed.
    void changed();

private:
    static QByteArray mark(const QByteArray& text);

    Document document;
    Count count;
    Count limit;
    QByteArray current; ///< hashes of the list's text: current, last saved, last written
    QByteArray saved;
    QByteArray written;
};
