#include "writecommand.h"

#include "charger.h"
#include "chargerimage.h"
#include "commandoptions.h"
#include "console.h"
#include "profilefile.h"
#include "schemafile.h"

ExitCode WriteCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral(
            "Writes the profiles of an XML or HEX file to the charger, as the editor does: the "
            "charger's profiles are erased, then these are programmed. Nothing is done if the file "
            "is damaged, contains more profiles than the charger takes, or contains anything that "
            "would be left out. The charger must be in bootloader mode and stays in it."));
    SchemaFile::addOptions(options);
    Charger::addPortOption(options);
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("XML or HEX."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const QString port = options.value(QStringLiteral("port"));
    if (port.isEmpty()) {
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
    if (!Charger(port, options).write(image.path())) {
        return ExitCode::NotReadable;
    }
    return input.messages().isEmpty() ? ExitCode::Ok : ExitCode::ProblemsFound;
}
