// Writes the demo's firmware as an Intel HEX file: a program, and one profile of each chemistry of
// the settings header for updates that replace the charger's profiles. No charger could run the
// program: it is made up, with the size and structure of a real one.
//
//   demo-firmware SETTINGS-HEADER OUTPUT

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexbuffer.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/writetohex.h"
#include "intelhexwriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <memory>

namespace
{
constexpr quint32 programStart = 0x0C00;
constexpr quint32 programEnd = 0x7400;

/// A word of three bytes and a zero byte.
QByteArray word(quint32 value)
{
    QByteArray bytes(4, '\0');
    for (int i = 0; i < 3; ++i) {
        bytes[i] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
}

QByteArray program()
{
    QByteArray bytes;
    quint32 state = 1; // seed of a generator with the same numbers everywhere
    for (quint32 address = programStart; address < programEnd; address += 2) {
        state = state * 1664525U + 1013904223U;
        bytes += word(state >> 8);
    }
    return bytes;
}

void switchOn(const HParser::StructSettings& profile, const QString& flag)
{
    profile.getStructSettingByDescriptiveName(flag)->setValue(true);
}

/// Returns a profile of each chemistry, all active and the first one the default.
QByteArray defaultProfiles(const HParser::Generator& generator)
{
    using namespace HEXGeneratorParser;
    HEXBuffer buffer(HexUtility::imageSize, nullptr);
    const QList<HParser::StructSettings*> chemistries = generator.getChemistrySettings();
    for (const HParser::StructSettings* chemistry : chemistries) {
        const std::unique_ptr<HParser::StructSettings> profile = chemistry->deepCopy();
        profile->buildFormulaTrees();
        switchOn(*profile, QStringLiteral("active"));
        if (buffer.size() == 0) {
            switchOn(*profile, QStringLiteral("default"));
        }
        WriteToHEX().serializeProfile(&buffer, profile.get());
    }
    QByteArray bytes;
    for (int i = 0; i < buffer.size(); ++i) {
        bytes += static_cast<char>(buffer.getByte(i));
    }
    HexUtility::fixBytesAlignment(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size());
    return bytes;
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        return 2;
    }
    HParser::Generator generator(nullptr);
    generator.setHFileLocation(arguments.at(1));
    generator.generate();

    const QByteArray end = IntelHexWriter::recordLine(1, 0, QByteArray());
    const quint32 profileStart = static_cast<quint32>(generator.getProfileStartWordAddress());
    const QByteArray text =
        IntelHexWriter::fileText(2 * programStart, program()).chopped(end.size())
        + IntelHexWriter::fileText(2 * profileStart, defaultProfiles(generator));
    QFile file(arguments.at(2));
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
    return isWritten ? 0 : 1;
}
