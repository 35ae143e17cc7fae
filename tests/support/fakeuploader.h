#pragma once

#include "base/buildconstants.h"
#include "support/files.h"

#include <QList>

/// A shell script under the uploader's name that records how it was called. It is in a temporary
/// folder, which is the working folder while this object exists.
class FakeUploader
{
public:
    /// `behaviour` is what the script does after recording its arguments.
    explicit FakeUploader(const QByteArray& behaviour = "exit 0") { setBehaviour(behaviour); }

    void setBehaviour(const QByteArray& behaviour)
    {
        writeProgram(BuildConstants::uploaderFileName,
                     "#!/bin/sh\n"
                     "{ echo '--- run'; printf '%s\\n' \"$@\"; } >> runs.txt\n"
                         + behaviour + "\n");
    }

    /// Ends by a signal, as a crashing program does, without leaving a core file.
    static QByteArray crash() { return "ulimit -c 0; kill -ABRT $$"; }

    /// Waits until the file "go" appears.
    static QByteArray waitForGo() { return "while [ ! -e go ]; do sleep 0.01; done"; }

    static void remove() { EXPECT_TRUE(QFile::remove(BuildConstants::uploaderFileName)); }

    static void makeNotExecutable()
    {
        EXPECT_TRUE(QFile::setPermissions(BuildConstants::uploaderFileName,
                                          QFile::ReadOwner | QFile::WriteOwner));
    }

    /// The arguments of every run so far.
    static QList<QStringList> runs()
    {
        QList<QStringList> found;
        const QStringList lines = QString::fromUtf8(contentOf("runs.txt")).split('\n');
        for (const QString& line : lines.mid(0, lines.size() - 1)) {
            if (line == "--- run") {
                found.append(QStringList());
            } else {
                found.last().append(line);
            }
        }
        return found;
    }

private:
    WorkingFolder folder;
};
