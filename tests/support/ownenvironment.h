#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <clocale>
#include <memory>

#include <sys/stat.h>

/// Sets up the environment of a test process and its children, whoever starts them: their own home,
/// XDG folders and temporary folder, so that none of the user's files is read or written, a locale
/// with the encoding UTF-8, and a screen without scaling. Create it before the application object;
/// the folders are deleted with it. The files of a killed child are left in its parent's folder.
class OwnEnvironment
{
public:
    OwnEnvironment()
    {
        qputenv("LC_ALL", "C.UTF-8");
        qunsetenv("LANGUAGE");
        if (!qEnvironmentVariableIsSet("QT_FONT_DPI")) {
            qputenv("QT_FONT_DPI", "96"); // a scale of 1: screens in memory have 100
        }
        std::setlocale(LC_ALL, ""); // before Qt chooses the encoding of file names
        folder = std::make_unique<QTemporaryDir>();
        if (!folder->isValid()) {
            qFatal("no temporary folder: %s", qPrintable(folder->errorString()));
        }
        // Tests that drop root's permissions must still be able to use their folders.
        constexpr mode_t forAll = 0755;
        constexpr mode_t temporary = 01777;
        constexpr mode_t forUser = 0700;
        chmod(QFile::encodeName(folder->path()).constData(), forAll);
        use("HOME", "home", forAll);
        use("XDG_CONFIG_HOME", "home/.config", forAll);
        use("XDG_DATA_HOME", "home/.local/share", forAll);
        use("XDG_STATE_HOME", "home/.local/state", forAll);
        use("XDG_CACHE_HOME", "home/.cache", forAll);
        use("XDG_RUNTIME_DIR", "run", forUser);
        use("TMPDIR", "tmp", temporary);
    }

private:
    void use(const char* variable, const char* name, mode_t mode) const
    {
        const QString path = folder->filePath(QString::fromLatin1(name));
        const QByteArray encoded = QFile::encodeName(path);
        if (!QDir().mkpath(path) || chmod(encoded.constData(), mode) != 0) {
            qFatal("cannot make %s", encoded.constData());
        }
        qputenv(variable, encoded);
    }

    std::unique_ptr<QTemporaryDir> folder;
};
