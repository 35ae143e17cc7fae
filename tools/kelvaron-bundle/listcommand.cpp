#include "listcommand.h"

#include "commandoptions.h"
#include "console.h"
#include "fatalexit.h"
#include "inspectedbundle.h"
#include "standardoutput.h"

namespace
{
QString row(const QString& index, const QString& lines, const QString& bytes,
            const QString& checksum, const QString& verdict, const QString& name)
{
    return QStringLiteral("%1 %2 %3  %4  %5  %6")
        .arg(index, 7)
        .arg(lines, 6)
        .arg(bytes, 8)
        .arg(checksum, -32)
        .arg(verdict, -5)
        .arg(name);
}

void printSection(const InspectedBundle& bundle, int index)
{
    const QString text = bundle.sectionText(index);
    const bool isChecked = index < bundle.sectionCount() - 1;
    const QString verdict = bundle.isIntact(index) ? QStringLiteral("ok") : QStringLiteral("WRONG");
    printLine(row(QString::number(index), QString::number(text.count(QLatin1Char('\n'))),
                  QString::number(text.toUtf8().size()), KelvaronBundle::checksum(text),
                  isChecked ? verdict : QStringLiteral("-"), bundle.sectionName(index)));
}
} // namespace

ExitCode ListCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral("Shows the keys of a bundle and, for each section, its number, lines, "
                       "bytes, checksum and name. Checksums that do not match are shown, "
                       "not counted as a failure."));
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("The bundle."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const QString path = options.file();
    exitOnFatalAssertion(path);

    InspectedBundle bundle(path);
    if (!bundle.readSections()) {
        printError(path, bundle.error());
        return ExitCode::Failed;
    }
    bundle.contents().parseKeyValuePairs();
    const QMap<QString, QString> keys = bundle.contents().getKeyValuePairs();
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        printLine(QStringLiteral("%1 = %2").arg(key.key(), key.value()));
    }
    printLine(row(QStringLiteral("section"), QStringLiteral("lines"), QStringLiteral("bytes"),
                  QStringLiteral("checksum"), QString(), QStringLiteral("name")));
    for (int i = 0; i < bundle.sectionCount(); ++i) {
        printSection(bundle, i);
    }
    return ExitCode::Ok;
}
