#include "support/gui/steppeduploader.h"

#include "support/files.h"
#include "support/waiting.h"

#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>

namespace
{
const QByteArray script = "#!/bin/sh\n"
                          "printf '%s\\n' \"$@\" > stepped.arguments\n"
                          "echo $$ > stepped.new\n"
                          "mv stepped.new stepped.pid\n"
                          "while read -r line; do\n"
                          "    eval \"$line\"\n"
                          "done < stepped.steps\n";
} // namespace

SteppedUploader::SteppedUploader(const QString& installationFolder) : folder(installationFolder)
{
    writeProgram(path("supl.mac"), script);
    const QByteArray pipe = QFile::encodeName(path("stepped.steps"));
    EXPECT_EQ(mkfifo(pipe.constData(), 0600), 0);
    steps = open(pipe.constData(), O_RDWR | O_CLOEXEC);
    EXPECT_GE(steps, 0);
}

SteppedUploader::~SteppedUploader()
{
    close(steps);
}

void SteppedUploader::print(const QByteArray& chunk)
{
    const QString name = QString("stepped.chunk%1").arg(++numChunks);
    writeFile(path(name), chunk);
    run("cat " + name.toLatin1());
}

void SteppedUploader::run(const QByteArray& shellLine)
{
    const QByteArray line = shellLine + '\n';
    EXPECT_EQ(::write(steps, line.constData(), static_cast<std::size_t>(line.size())), line.size());
}

QStringList SteppedUploader::waitForStart()
{
    EXPECT_TRUE(waitFor([this] { return QFile::exists(path("stepped.pid")); }))
        << "the uploader was not started";
    if (lastPid > 0) { // a killed one may still consume a step meant for its successor
        EXPECT_TRUE(waitForEnd()) << "the uploader before it has not ended";
    }
    lastPid = read("stepped.pid").trimmed().toLongLong();
    QFile::remove(path("stepped.pid"));
    QStringList arguments = QString::fromUtf8(read("stepped.arguments")).split('\n');
    arguments.removeLast(); // after the last line's end
    return arguments;
}

bool SteppedUploader::isRunning() const
{
    return lastPid > 0 && kill(static_cast<pid_t>(lastPid), 0) == 0;
}

bool SteppedUploader::waitForEnd() const
{
    return waitFor([this] { return !isRunning(); });
}

QByteArray SteppedUploader::read(const QString& name) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

QString SteppedUploader::path(const QString& name) const
{
    return QDir(folder).filePath(name);
}
