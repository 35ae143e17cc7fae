#pragma once

#include "KelvaronBundle/kelvaronbundle.h"
#include "schemareview/problem.h"

#include <QString>

/// A bundle read for inspection: its sections with their names, and their errors.
class InspectedBundle
{
public:
    explicit InspectedBundle(const QString& path);

    /// Reads the sections. If it returns false, `error()` describes why there is nothing to
    /// inspect.
    bool readSections();

    QString error() const { return problem; }

    /// Returns the number of sections, including the one with the checksums.
    int sectionCount() const { return bundle.getNumFiles(); }

    /// Returns the name in the opening marker line of a section; may be empty.
    QString sectionName(int index) const { return bundle.getName(index); }

    /// Returns the text of a section, each line ended by a line feed.
    QString sectionText(int index) const { return bundle.getFile(index); }

    /// Returns, for messages, "section 1 (kelvaron_chemistries.cb)".
    QString describeSection(int index) const;

    /// Returns true if the last section has the checksum of this one. It has none of its own.
    bool isIntact(int index) const;

    /// Returns why the editor would not trust the sections.
    Problems sectionProblems() const;

    /// Returns the errors in the keys.
    Problems keyProblems() const;

    /// Returns the keys; none if a line among them is malformed.
    QMap<QString, QString> keys();

private:
    QString bundlePath;
    KelvaronBundle bundle;
    QString text;
    QString problem;
};
