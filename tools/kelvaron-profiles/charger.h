#pragma once

#include <QString>

class CommandOptions;

/// The charger at a serial port. Everything is done by the uploader, as the editor has it done: it is
/// started in the editor's folder, and its exit code tells whether it has succeeded. The port is kept from
/// other programs meanwhile.
class Charger
{
public:
    /// Adds the option --uploader.
    static void addOptions(CommandOptions& options);

    /// Adds the option --port as well.
    static void addPortOption(CommandOptions& options);

    /// `options` name the folder and the uploader.
    Charger(const QString& portName, const CommandOptions& options);

    /// Reads the profile area into a HEX file. False when that fails, which is reported. The path is
    /// absolute.
    bool read(const QString& hexFile) const;

    /// Erases the profile area and programs a HEX file into it. The same for the result and the path.
    bool write(const QString& hexFile) const;

    /// What the user knows it by: "charger:PORT".
    QString name() const;

    static QString prefix() { return QStringLiteral("charger:"); }

private:
    template <typename Worker>
    bool run(Worker* worker, void (Worker::*failed)(), const QString& failure) const;
    bool isReady() const;

    QString port;
    QString folder;
    QString uploader;
};
