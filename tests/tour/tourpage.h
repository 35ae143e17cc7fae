#pragma once

#include <QString>
#include <QStringList>

/// The page that shows a tour's pictures in their order, each with a title and a sentence.
class TourPage
{
public:
    /// Returns whether there is a title and a sentence for the picture of this name.
    static bool describes(const QString& name);

    /// Adds the picture of this name, which is in `fileName` next to the page.
    void add(const QString& name, const QString& fileName);

    /// Writes the page as index.html into the folder; returns false if that fails.
    bool write(const QString& folder) const;

private:
    QStringList figures;
};
