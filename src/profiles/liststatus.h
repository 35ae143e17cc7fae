#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

/// How the profile list compares with what was saved and what the charger holds, in a few words for the
/// status bar.
class ListStatus : public QObject
{
    Q_OBJECT

public:
    using Document = std::function<QString()>;
    using Count = std::function<int()>;

    /// `profileFile` returns the text of a profile file that holds the list, `profiles` how many there
    /// are and `allowed` how many the charger takes.
    ListStatus(Document profileFile, Count profiles, Count allowed);

    /// For example "14 profiles, the charger takes 13; changed since saved"; empty when there is nothing
    /// to say.
    QString text() const;

public slots:
    /// The list as it is now is a file's content, or the charger's.
    void markSaved();
    void markWritten();

    /// The list may have changed; `profileFile` is its text now.
    void update(const QByteArray& profileFile);

signals:
    /// text() may have changed.
    void changed();

private:
    static QByteArray mark(const QByteArray& text);

    Document document;
    Count count;
    Count limit;
    QByteArray current; ///< marks of the list's text now, when it was saved and when it was written
    QByteArray saved;
    QByteArray written;
};
