#pragma once

#include "console.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

/// The faults to simulate, read from lines "[STEP.]KEY = VALUE". A key without a step applies to
/// every run, one with a step only to that step; the more specific one wins.
class Faults
{
public:
    /// Creates an empty list: no faults.
    Faults() = default;

    /// Reads the file; a missing one means no faults. Throws a Failure that names the line if a
    /// key, a step or a value is not valid or a key is given twice.
    explicit Faults(const QString& path);

    /// Sets the step, and its stage if not empty, for which faults are looked up.
    void enter(const QString& step, const QString& stage = QString());

    bool isOn(const char* key) const { return value(key) == QLatin1String("yes"); }

    /// Returns the number of a key; nothing if the key is not given.
    std::optional<int> number(const char* key) const;

    /// Returns the text of a key; empty if the key is not given.
    QString value(const char* key) const;

    Pace pace() const;

    /// Returns the chapter about faults in the help.
    static QString help();

private:
    QHash<QString, QString> values;
    QStringList scopes = {QString()};
};
