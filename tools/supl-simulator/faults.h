#pragma once

#include "pace.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

/// The faults that a run is to show, from a text of lines "[STEP.]KEY = VALUE". A key without a step
/// holds for every run, one with a step there only; the nearer one wins.
class Faults
{
public:
    /// No faults at all.
    Faults() = default;

    /// Reads the file; a missing one means no faults. Throws a Failure that names the line when a
    /// key, a step or a value is unknown or a key is given twice.
    explicit Faults(const QString& path);

    /// From now on faults are looked up for this step and, if not empty, this stage of it.
    void enter(const QString& step, const QString& stage = QString());

    bool isOn(const char* key) const { return value(key) == QLatin1String("yes"); }

    /// The number of a key; nothing when it is not given.
    std::optional<int> number(const char* key) const;

    /// The text of a key; empty when it is not given.
    QString value(const char* key) const;

    Pace pace() const;

    /// The chapter of the help.
    static QString help();

private:
    QHash<QString, QString> values;
    QStringList scopes = {QString()};
};
