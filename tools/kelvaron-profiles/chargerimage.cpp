#include "chargerimage.h"

#include "console.h"
#include "profilefile.h"
#include "profileoutput.h"

std::optional<ExitCode> ChargerImage::make(ProfileFile& input, const HParser::Generator& schema)
{
    const ExitCode code = input.read();
    printMessages(input.name(), input.messages());
    if (!input.isUsable()) {
        return code;
    }
    const QStringList refused = ProfileOutput::obstacles(input, schema);
    printMessages(input.name(), refused);
    if (!refused.isEmpty() || input.hasErrors()) {
        printError(input.name(),
                   QStringLiteral("the charger cannot hold it unchanged; nothing was done"));
        return ExitCode::ProblemsFound;
    }
    if (!folder.isValid() || !ProfileOutput::writeHex(path(), input, schema)) {
        printError(path(), QStringLiteral("cannot be written"));
        return ExitCode::NotReadable;
    }
    return std::nullopt;
}
