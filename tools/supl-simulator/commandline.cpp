#include "commandline.h"

#include "faults.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{
/// Reads an address in the form 0x9C00 into `address`.
bool readAddress(const QString& text, quint32& address)
{
    static const QRegularExpression form(QStringLiteral("\\A0[xX]([0-9A-Fa-f]{1,6})\\z"));
    const QRegularExpressionMatch match = form.match(text);
    address = match.captured(1).toUInt(nullptr, 16);
    return match.hasMatch();
}

std::optional<Job> parseOperation(const QString& port, const QStringList& rest)
{
    Job job;
    job.port = port;
    const QString option = rest.value(0);
    if (option == QLatin1String("-R") && rest.size() == 1) {
        job.operation = Operation::Reset;
        return job;
    }
    if (option == QLatin1String("-w") && rest.size() == 2) {
        job.operation = Operation::Write;
        job.file = rest.at(1);
        return job;
    }
    if (option == QLatin1String("-e") && rest.size() == 5 && rest.at(1) == QLatin1String("-w")
        && rest.at(3) == QLatin1String("-v")) {
        job.operation = Operation::Flash;
        job.file = rest.at(2);
        job.verifyFile = rest.at(4);
        return job;
    }
    const bool isErase = option == QLatin1String("-E") && rest.size() == 3;
    const bool isRead = option == QLatin1String("-l") && rest.size() == 4;
    if ((!isErase && !isRead) || !readAddress(rest.at(1), job.low)
        || !readAddress(rest.at(2), job.high)) {
        return std::nullopt;
    }
    job.operation = isErase ? Operation::Erase : Operation::Read;
    job.file = rest.value(3);
    return job;
}
} // namespace

QString Job::step() const
{
    switch (operation) {
    case Operation::Erase:
        return QStringLiteral("erase");
    case Operation::Write:
        return QStringLiteral("write");
    case Operation::Read:
        return QStringLiteral("read");
    case Operation::Reset:
        return QStringLiteral("reset");
    case Operation::Flash:
        return QStringLiteral("flash");
    case Operation::Help:
        break;
    }
    return QString();
}

std::optional<Job> CommandLine::parse(const QStringList& arguments)
{
    if (arguments == QStringList{QStringLiteral("--help")}) {
        return Job();
    }
    if (arguments.size() < 5 || arguments.at(0) != QLatin1String("-s")
        || arguments.at(2) != QLatin1String("-h") || arguments.at(3) != QLatin1String("-V")) {
        return std::nullopt;
    }
    return parseOperation(arguments.at(1), arguments.mid(4));
}

QString CommandLine::usage()
{
    return QStringLiteral(
        "Usage: supl -s PORT -h -V -E LOW HIGH           erase the range\n"
        "       supl -s PORT -h -V -w FILE               program an Intel HEX file\n"
        "       supl -s PORT -h -V -l LOW HIGH FILE      read the range into an Intel HEX file\n"
        "       supl -s PORT -h -V -R                    reset the charger\n"
        "       supl -s PORT -h -V -e -w FILE -v FILE    erase, program and verify the firmware\n"
        "       supl --help                              show the complete help\n");
}

QString CommandLine::help()
{
    return QStringLiteral(
               "A charger without a cable: does what the charger's uploader does, with a memory in "
               "a file.\n\n")
           + usage()
           + QStringLiteral(
               "\n"
               "LOW and HIGH are hexadecimal (0x9C00), two addresses per program word; HIGH is\n"
               "not part of the range. A word at address A is at byte 2 * A of a HEX file: three\n"
               "data bytes, then a zero. -h and -V have no effect but must be given.\n"
               "\"device.txt\" in the current folder describes the charger's processor.\n"
               "\n"
               "Exit codes: 0 success; 1 the charger or a file failed; 2 wrong command line;\n"
               "3 a file of the simulator itself cannot be used.\n"
               "\n"
               "Next to the program:\n"
               "  charger-memory.bin   the flash, byte by byte as in a HEX file; created blank\n"
               "                       if missing\n"
               "  charger-state.txt    how often the charger was reset\n"
               "  charger-memory.lock  there while a run uses the charger\n"
               "  supl-faults.txt      faults to simulate, see below\n"
               "  supl-log.txt         arguments and exit code of every run, if the faults file\n"
               "                       asks for it\n"
               "\n")
           + Faults::help();
}
