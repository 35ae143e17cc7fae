#pragma once

#include <QByteArray>
#include <QList>

/// Small schema headers that follow the image's conventions.
namespace ChargerSchema
{
inline const QByteArray globalStruct =
    "struct G { // Settings : \"Global Settings\", global\n"
    "    unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", G, 1, -1, advanced\n"
    "    unsigned char tone; // num, auto, 0, 9, x1, 0, \"Key Tone\", \"\", G, 5, 0, basic\n"
    "    unsigned char checksum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", G, 0, -1, basic\n"
    "}\n";

inline QByteArray header(const QByteArray& chemistries, const char* startAddress = "0x9C00")
{
    return QByteArray("#define PROFILESTARTADDRESS ") + startAddress + '\n' + globalStruct
           + chemistries;
}

inline QByteArray chemistry(const QByteArray& title, const QByteArray& members)
{
    return "struct C { // Settings : \"" + title + "\", instantiable\n" + members + "}\n";
}

inline QByteArray typeMember(const QByteArray& value)
{
    return "    unsigned char type; // num, auto, 0, 255, x1, 0, \"type\", \"\", G, " + value
           + ", -1, advanced\n";
}

inline const QByteArray checksumMember =
    "    unsigned char checksum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", G, 0, -1, basic\n";

/// Eight bits: the three flags and five spare ones.
inline const QByteArray flagMembers =
    "    char a; // bool, 1, \"active\", F, 0, -1, basic\n"
    "    char d; // bool, 1, \"default\", F, 0, -1, basic\n"
    "    char m; // bool, 1, \"modifiable\", F, 1, -1, basic\n"
    "    char s; // num, 5, 0, 31, x1, 0, \"Spare\", \"\", F, 0, -1, basic\n";

inline const QByteArray titleMember =
    "    char title[8]; // string, auto, \"Title\", G, \"Battery\", 0, basic\n";

/// Chemistries of these names, of consecutive types, whose memory has room for three profiles when the
/// filler is as long as usual.
inline QByteArray ofChemistries(const QList<QByteArray>& names, int firstType = 2,
                                int fillerSize = 333)
{
    const auto type = [](int value) { return typeMember(QByteArray::number(value)); };
    QByteArray text = "#define PROFILESTARTADDRESS 0x9C00\n"
                      "struct G { // Settings : \"Global\", global\n"
                      + type(1) + checksumMember + "}\n";
    for (int i = 0; i < names.size(); ++i) {
        text += chemistry(
            names.at(i),
            type(firstType + i)
                + "    char title[20]; // string, auto, \"Title\", G, \"New\", 0, basic\n"
                  "    char sub[20]; // string, auto, \"Subtitle\", G, \"Sub\", 1, basic\n"
                  "    short volts; // num, auto, 0, 99, x0.01, 2, \"Volts\", \"V\", G, 4.2, 2, basic\n"
                  "    char filler["
                + QByteArray::number(fillerSize)
                + "]; // string, auto, \"filler\", G, \"\", -1, basic\n" + flagMembers
                + checksumMember);
    }
    return text;
}
} // namespace ChargerSchema
