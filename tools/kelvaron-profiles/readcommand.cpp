#include "readcommand.h"

#include "base/textfile.h"
#include "charger.h"
#include "commandoptions.h"
#include "console.h"
#include "inputfile.h"
#include "profilefile.h"
#include "profileoutput.h"
#include "profilesource.h"
#include "schemafile.h"

#include <QFile>

namespace
{
/// Copies exactly the bytes that the uploader has read, even if there are no profiles in them.
bool copyBytes(const QString& from, const QString& to)
{
    QFile file(from);
    return InputFile::fault(from).isEmpty() && file.open(QIODevice::ReadOnly)
           && TextFile::writeBytes(to, file.readAll());
}
} // namespace

ExitCode ReadCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral(
            "Reads the charger's profiles into a file, as the editor does. A HEX file contains "
            "exactly what the uploader has read, an XML file what the editor would import from it. "
            "The charger must be in bootloader mode and stays in it."));
    SchemaFile::addOptions(options);
    Charger::addPortOption(options);
    ProfileOutput::addOption(options);
    options.addFileArgument(QStringLiteral("OUTPUT"), QStringLiteral("The file to write."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    if (options.value(QStringLiteral("port")).isEmpty()) {
        return options.usageError(QStringLiteral("--port is missing"));
    }
    const QString path = options.file();
    const std::optional<ProfileFile::Format> format = ProfileOutput::format(options, path);
    if (!format) {
        return ExitCode::Usage;
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileSource source(Charger::prefix() + options.value(QStringLiteral("port")), options);
    if (!source.fetch()) {
        return ExitCode::NotReadable;
    }
    ProfileFile charger(source.path(), schema.generator(), source.name());
    const ExitCode code = charger.read();
    printMessages(charger.name(), charger.messages());
    const bool isHex = *format == ProfileFile::Format::Hex;
    if (!isHex && !charger.isUsable()) {
        return code;
    }
    if (isHex ? !copyBytes(source.path(), path)
              : !ProfileOutput::writeXml(path, charger, schema.generator())) {
        printError(path, QStringLiteral("cannot be written"));
        return ExitCode::NotReadable;
    }
    return code;
}
