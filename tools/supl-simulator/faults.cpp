#include "faults.h"

#include "failure.h"
#include "keyvaluefile.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace
{
struct Key
{
    const char* name;
    const char* form; ///< regular expression for the value
};

constexpr Key keys[] = {
    {"pace", "\\d{1,5} ?(%|ms)"},
    {"absent-port", "\\S.*"},
    {"no-port", "yes|no"},
    {"no-bootloader", "yes|no"},
    {"no-stx", "yes|no"},
    {"exit-code", "\\d|\\d\\d|1\\d\\d|2[0-4]\\d|25[0-5]"},
    {"crash", "yes|no"},
    {"stall", "yes|no"},
    {"delay", "\\d{1,6}"},
    {"flood", "\\d{1,6}"},
    {"write-protect", "yes|no"},
    {"verify-fail", "yes|no"},
    {"garble", "data|checksum"},
    {"truncate", "yes|no"},
    {"log", "yes|no"},
};

constexpr const char* stepNames[] = {"erase",      "write",       "read",
                                     "reset",      "flash",       "flash-erase",
                                     "flash-load", "flash-write", "flash-verify"};

bool isStep(const QString& text)
{
    return std::any_of(std::begin(stepNames), std::end(stepNames),
                       [&](const char* name) { return text == QLatin1String(name); });
}

/// Returns the error in an entry; empty if there is none.
QString complaint(const QString& step, const QString& name, const QString& value)
{
    if (!step.isEmpty() && !isStep(step)) {
        return QStringLiteral("unknown step \"%1\"").arg(step);
    }
    const auto* const key = std::find_if(std::begin(keys), std::end(keys), [&](const Key& known) {
        return name == QLatin1String(known.name);
    });
    if (key == std::end(keys)) {
        return QStringLiteral("unknown key \"%1\"").arg(name);
    }
    const QRegularExpression form(QRegularExpression::anchoredPattern(QLatin1String(key->form)));
    if (!form.match(value).hasMatch()) {
        return QStringLiteral("%1 cannot be \"%2\"").arg(name, value);
    }
    return QString();
}
} // namespace

Faults::Faults(const QString& path)
{
    const auto entries = KeyValueFile::read(path, ExitCode::BrokenSetup);
    if (!entries) {
        return;
    }
    for (const KeyValueFile::Entry& entry : *entries) {
        const int dot = entry.key.indexOf(QLatin1Char('.'));
        const QString step = entry.key.left(std::max(dot, 0));
        QString problem = dot == 0 ? QStringLiteral("the step is missing")
                                   : complaint(step, entry.key.mid(dot + 1), entry.value);
        if (problem.isEmpty() && values.contains(entry.key)) {
            problem = QStringLiteral("%1 is given twice").arg(entry.key);
        }
        if (!problem.isEmpty()) {
            throw Failure{
                QStringLiteral("supl-faults.txt: line %1: %2").arg(entry.line).arg(problem),
                ExitCode::BrokenSetup};
        }
        values.insert(entry.key, entry.value);
    }
}

void Faults::enter(const QString& step, const QString& stage)
{
    scopes = QStringList{step + QLatin1Char('.'), QString()};
    if (!stage.isEmpty()) {
        scopes.prepend(step + QLatin1Char('-') + stage + QLatin1Char('.'));
    }
}

QString Faults::value(const char* key) const
{
    for (const QString& scope : scopes) {
        const auto found = values.constFind(scope + QLatin1String(key));
        if (found != values.constEnd()) {
            return *found;
        }
    }
    return QString();
}

std::optional<int> Faults::number(const char* key) const
{
    const QString text = value(key);
    return text.isEmpty() ? std::nullopt : std::optional<int>(text.toInt());
}

Pace Faults::pace() const
{
    const QString text = value("pace");
    if (text.isEmpty()) {
        return Pace();
    }
    const bool isFixed = text.endsWith(QLatin1String("ms"));
    return {isFixed, text.chopped(isFixed ? 2 : 1).trimmed().toInt()};
}

QString Faults::help()
{
    return QStringLiteral(
        "The faults file has lines \"KEY = VALUE\" or \"STEP.KEY = VALUE\"; \"#\" begins a "
        "comment.\n"
        "A key without a step applies to every run, one with a step only there, where it wins.\n"
        "Steps: erase (-E), write (-w), read (-l), reset (-R), flash (-e -w -v) and its stages\n"
        "flash-erase, flash-load, flash-write, flash-verify.\n"
        "\n"
        "  pace = 20%            pauses of a fifth of the normal length; 0% means no pauses\n"
        "  pace = 30ms           pauses of 30 milliseconds everywhere\n"
        "  absent-port = A B     the ports A and B cannot be opened\n"
        "  no-port = yes         no port can be opened\n"
        "  no-bootloader = yes   no answer: the charger is not in bootloader mode\n"
        "  no-stx = yes          the answer does not begin as it should\n"
        "  exit-code = N         end with N (0 to 255) before the step has done anything\n"
        "  crash = yes           abort halfway through the step\n"
        "  stall = yes           hang halfway through the step until killed\n"
        "  delay = N             pause halfway through the step for N milliseconds, at any pace\n"
        "  flood = N             print N more lines halfway through the step\n"
        "  write-protect = yes   the memory can neither be erased nor programmed\n"
        "  verify-fail = yes     the memory does not verify after flashing\n"
        "  garble = data         the file read has a changed byte with a matching checksum\n"
        "  garble = checksum     the file read has a line with a wrong checksum\n"
        "  truncate = yes        the file read ends in the middle of a line\n"
        "  log = yes             add arguments and exit code of each run to supl-log.txt\n"
        "\n"
        "A step of the flash run is its stage: \"flash.crash\" ends the run in its first stage,\n"
        "\"flash-write.crash\" in the third.\n");
}
