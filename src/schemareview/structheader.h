#pragma once

#include <QString>

namespace HParser
{
/// What is wrong with a line of the schema header that was to open a struct of settings.
class StructHeader
{
public:
    /// REQUIRES: a line that is not sound.
    explicit StructHeader(const QString& line);

    /// What such a line looks like.
    static QString form();

    /// Where the line goes wrong, counted from 1.
    int column() const { return place; }

    /// What is there, and what to write.
    QString fault() const { return text; }
    QString advice() const { return remedy; }

    /// True for a line that was to open the global struct.
    bool isMeantGlobal() const { return meantGlobal; }

private:
    int place = 1;
    QString text;
    QString remedy;
    bool meantGlobal;
};
} // namespace HParser
