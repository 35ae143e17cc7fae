#pragma once

#include <QString>

class CommandOptions;

/// The charger at a serial port. As in the editor, the uploader does all the work: it is started in
/// the editor's folder, and its exit code shows whether it has succeeded. The port is locked
/// against other programs meanwhile.
class Charger
{
public:
    /// Adds the option --uploader.
    static void addOptions(CommandOptions& options);

    /// Also adds the option --port.
    static void addPortOption(CommandOptions& options);

    /// `options` contain the folder and the uploader.
    Charger(const QString& portName, const CommandOptions& options);

    /// Reads the profile area into a HEX file. Reports a failure and returns false. The path must
    /// be absolute.
    bool read(const QString& hexFile) const;

    /// Erases the profile area and programs a HEX file into it. Reports a failure and returns
    /// false. The path must be absolute.
    bool write(const QString& hexFile) const;

    /// Returns the name shown to the user: "charger:PORT".
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
