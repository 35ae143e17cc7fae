#pragma once

#include "HEXGeneratorParser/hexbuffer.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "profileimport/parsedprofile.h"
#include "support/chargerschema.h"
#include "support/imagesupport.h"
#include "support/standardoutputcapture.h"

#include <optional>

using HEXGeneratorParser::HEXBuffer;
using HEXGeneratorParser::ReadFromHEX;
using ImageSupport::bytesOf;
using ImageSupport::generatorOf;

inline constexpr int startAddress = 0x9C00;

inline const QByteArray batteryMembers =
    ChargerSchema::typeMember("3") + ChargerSchema::titleMember + ChargerSchema::flagMembers
    + "int volts; // num, auto, 0, 99, x0.01, 2, \"Cell Voltage\", \"V\", G, 4.2, 1, basic\n"
      "char sw; // bool, auto, \"Fast / Slow\", G, 0, 2, basic\n"
      "char mode[4]; // list, auto, \"Mode\", G, \"On\", 3, \"On\", \"Off\", basic\n"
    + ChargerSchema::checksumMember;

/// A structure of the battery chemistry; the bytes add up to a multiple of 256 with the checksum.
inline void appendBattery(HEXBuffer& image, int flags, int checksumError = 0)
{
    image.appendByte(3);
    image.appendBytes(QByteArray("Racing\0\0", 8));
    image.appendByte(static_cast<char>(flags));
    image.appendBytes(bytesOf({0xA4, 0x01})); // 420 counts
    image.appendByte(1);
    image.appendBytes(QByteArray("Off\0", 4));
    image.appendByte(static_cast<char>(-image.sumBytesStruct() + checksumError));
    image.finishWritingStruct();
}

class ReadFromHEXTest : public ::testing::Test
{
protected:
    QString path() const { return folder.filePath("image.hex"); }

    /// Writes the buffer to the file and reads it; returns the code thrown by a failing import.
    std::optional<int> import(const HEXBuffer& image)
    {
        EXPECT_TRUE(image.writeToFile(path(), startAddress));
        return importFile();
    }

    std::optional<int> importFile()
    {
        const StandardOutputCapture capture;
        std::optional<int> error;
        try {
            if (!reader.read(path(), generator->getProfileStartWordAddress())) {
                error = 0;
            } else {
                profiles = reader.parseProfiles(generator.get());
            }
        } catch (int code) {
            error = code;
        }
        output = capture.text();
        return error;
    }

    QString value(int profile, const char* tag) const
    {
        return profiles.at(profile)->getProperties().value(tag, "(missing)");
    }

    std::unique_ptr<HParser::Generator> generator =
        generatorOf(ChargerSchema::header(ChargerSchema::chemistry("Battery", batteryMembers)));
    HEXBuffer buffer{2048, nullptr};
    QTemporaryDir folder;
    ReadFromHEX reader;
    QList<ParsedProfile*> profiles;
    std::string output;
};
