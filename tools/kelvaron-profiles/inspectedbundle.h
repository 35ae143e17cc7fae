#pragma once

#include "KelvaronBundle/kelvaronbundle.h"
#include "schemareview/problem.h"

#include <QString>
#include <QStringList>

/// A bundle read for inspection: its sections by name, and what is wrong with them.
class InspectedBundle
{
public:
    explicit InspectedBundle(const QString& path);

    /// Reads the sections. On false, `error()` says why there is nothing to inspect.
    bool readSections();

    QString error() const { return problem; }

    /// How many sections there are, the checksums' own included.
    int sectionCount() const { return bundle.getNumFiles(); }

    /// What the opening marker line of a section says; may be empty.
    QString sectionName(int index) const;

    /// The text of a section, each line ended by a line feed.
    QString sectionText(int index) const { return bundle.getFile(index); }

    /// For messages: "section 1 (kelvaron_chemistries.cb)".
    QString describeSection(int index) const;

    /// The checksum that the last section holds for this one; empty when it holds none.
    QString expectedChecksum(int index) const;

    /// True when the section's text has that checksum; the last section has none of its own.
    bool isIntact(int index) const;

    /// What keeps the editor from trusting the sections.
    Problems sectionProblems() const;

    /// What is wrong with the keys.
    Problems keyProblems() const;

    /// The keys; none when a line among them is malformed.
    QMap<QString, QString> keys();

private:
    QString bundlePath;
    KelvaronBundle bundle;
    QString text;
    QStringList checksums;
    QString problem;
};
