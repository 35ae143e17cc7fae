#pragma once

#include "KelvaronBundle/kelvaronbundle.h"
#include "schemareview/problem.h"

#include <QMap>
#include <QString>

/// Finds all problems of a bundle (see docs/file-formats/bundle.md), including those of its settings
/// header.
class BundleReview
{
public:
    /// Returns the problems of a bundle's text in the order of its lines. `fileName` may contain the
    /// bundle's version. REQUIRES: a text without carriage returns, as read by TextFile.
    static Problems problems(const QString& text, const QString& fileName);

    /// Returns only those of its sections and their checksums.
    static Problems sectionProblems(const QString& text);

    /// Returns only those of its keys.
    static Problems keyProblems(const QString& text, const QString& fileName);

private:
    explicit BundleReview(const QString& text);

    void checkSections();
    void checkChecksums();
    void checkKeys(const QString& text, const QString& fileName);
    void checkKeyLine(const QString& line, int number);
    void checkVersions(const QString& fileName);
    void checkHeader();
    int markerLine(int index) const; ///< the number of the line, counted from 1
    void add(int line, int column, Problem::Severity severity, const QString& text,
             const QString& advice);
    Problems sorted() const;

    struct Value
    {
        int line = 0;
        int keyColumn = 0;
        int column = 0;
        QString text;
    };

    KelvaronBundle bundle;       ///< its sections
    QMap<QString, Value> values; ///< by their keys
    Problems found;
};
