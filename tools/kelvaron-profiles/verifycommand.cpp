#include "verifycommand.h"

#include "charger.h"
#include "chargerimage.h"
#include "commandoptions.h"
#include "comparison.h"
#include "console.h"
#include "profilefile.h"
#include "profilesource.h"
#include "schemafile.h"

#include <QJsonDocument>

ExitCode VerifyCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral(
            "Reads the charger's profiles and compares them with those of an XML or HEX file as "
            "they are once written to the charger: a number that the charger can only store "
            "rounded does not count as a difference. The charger must be in bootloader mode and "
            "stays in it."));
    SchemaFile::addOptions(options);
    Charger::addPortOption(options);
    options.addJsonOption();
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("XML or HEX."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    if (options.value(QStringLiteral("port")).isEmpty()) {
        return options.usageError(QStringLiteral("--port is missing"));
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileFile input(options.file(), schema.generator());
    ChargerImage image;
    if (const std::optional<ExitCode> failed = image.make(input, schema.generator())) {
        return *failed;
    }
    ProfileSource source(Charger::prefix() + options.value(QStringLiteral("port")), options);
    if (!source.fetch()) {
        return ExitCode::NotReadable;
    }
    ProfileFile wanted(image.path(), schema.generator(), input.name());
    ProfileFile charger(source.path(), schema.generator(), source.name());
    wanted.read();
    const ExitCode code = charger.read();
    printMessages(charger.name(), charger.messages());
    if (!charger.isUsable()) {
        return code;
    }
    const Comparison comparison(wanted, charger);
    if (options.isJson()) {
        writeJson(QJsonDocument(comparison.json()));
    } else {
        comparison.print();
    }
    return comparison.isSame() ? code : ExitCode::ProblemsFound;
}
