#pragma once

#include <QList>
#include <QPair>
#include <QString>

/// Builds a bundle: keys, then sections in the order in which they were added, then the checksums.
class BundleWriter
{
public:
    /// REQUIRES: a key and a value that KelvaronBundle::parseKeyLine() reads, and a key that was
    /// not added before.
    void addKey(const QString& key, const QString& value);

    bool hasKey(const QString& key) const;

    /// Returns true for what can be the name of a section and of a file: one line without slashes,
    /// and neither "." nor "..".
    static bool isSectionName(const QString& name);

    /// REQUIRES: isSectionName(name), and lines each ended by a line feed, none of them a marker line,
    /// as returned by TextInput.
    void addSection(const QString& name, const QString& text);

    /// Returns the whole bundle.
    QString toText() const;

    /// Writes the bundle completely or not at all: on failure returns false and leaves an existing
    /// file unchanged; `error()` then returns the system's reason.
    bool write(const QString& path);

    QString error() const { return problem; }

private:
    struct Section
    {
        QString name;
        QString text;
    };

    QList<QPair<QString, QString>> keys;
    QList<Section> sections;
    QString problem;
};
