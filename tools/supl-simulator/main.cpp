#include "commandline.h"
#include "uploader.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <cstdio>

namespace
{
int print(FILE* stream, const QString& text, ExitCode code)
{
    std::fputs(text.toUtf8().constData(), stream);
    return static_cast<int>(code);
}
} // namespace

int main(int argc, char** argv)
{
#ifndef Q_OS_WIN
    // File names are UTF-8 in every locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const std::optional<Job> job = CommandLine::parse(arguments);
    if (!job) {
        return print(stderr, CommandLine::usage(), ExitCode::Usage);
    }
    if (job->operation == Operation::Help) {
        return print(stdout, CommandLine::help(), ExitCode::Ok);
    }
    Uploader uploader(*job, QCoreApplication::applicationDirPath());
    return static_cast<int>(uploader.run(arguments));
}
