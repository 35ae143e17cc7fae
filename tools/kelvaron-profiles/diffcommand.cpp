#include "diffcommand.h"

#include "charger.h"
#include "commandoptions.h"
#include "comparison.h"
#include "comparisonpage.h"
#include "console.h"
#include "profilefile.h"
#include "profilesource.h"
#include "schemafile.h"

#include <QJsonDocument>

ExitCode DiffCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral(
            "Compares two files of profiles, XML or HEX, setting by setting, as the "
            "editor would import them. charger:PORT in place of a file stands for the profiles of "
            "the charger at that port."));
    SchemaFile::addOptions(options);
    Charger::addOptions(options);
    options.addJsonOption();
    options.addHtmlOption();
    options.addFileArgument(QStringLiteral("LEFT"), QStringLiteral("XML, HEX or charger:PORT."));
    options.addFileArgument(QStringLiteral("RIGHT"), QStringLiteral("XML, HEX or charger:PORT."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileSource leftSource(options.files().at(0), options);
    ProfileSource rightSource(options.files().at(1), options);
    if (!leftSource.fetch() || !rightSource.fetch()) {
        return ExitCode::NotReadable;
    }
    ProfileFile left(leftSource.path(), schema.generator(), leftSource.name());
    ProfileFile right(rightSource.path(), schema.generator(), rightSource.name());
    ExitCode code = ExitCode::Ok;
    for (ProfileFile* file : {&left, &right}) {
        code = qMax(code, file->read());
        printMessages(file->name(), file->messages());
    }
    if (code == ExitCode::NotReadable || !left.isUsable() || !right.isUsable()) {
        return code;
    }
    const Comparison comparison(left, right);
    if (options.isJson()) {
        writeJson(QJsonDocument(comparison.json()));
    } else if (options.isHtml()) {
        writeOutput(ComparisonPage::page(comparison));
    } else {
        comparison.print();
    }
    return comparison.isSame() ? code : ExitCode::ProblemsFound;
}
