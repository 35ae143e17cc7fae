#include "support/gui/testschema.h"

#include "CBGenerator/generator.h"
#include "support/printing.h"

#include <QFile>
#include <QTemporaryDir>

namespace
{
const char globalStruct[] = R"(#define PROFILESTARTADDRESS 0x400

struct Global { // Settings : "Global Settings", global
    unsigned char type; // num, auto, 1, 1, x1, 0, "type", "", Identity, 1, -1, advanced
    char chargerName[16]; // string, auto, "Charger Name", General, "Bench", 0, basic
    unsigned short supply; // num, auto, 9, 30, x0.01, 2, "Supply Voltage", "V", General, 14.6, 1, basic
    unsigned char tone; // bool, 8, "Key Tone", General, 1, 2, basic
    unsigned char fan; // num, auto, 1, 8, x1, 0, "Fan Steps", "", General, 4, 3, advanced
    char scale[12]; // list, auto, "Scale", General, "Celsius", 4, "Celsius", "Fahrenheit", basic
    unsigned char checksum; // num, auto, 0, 255, x1, 0, "checksum", "", Identity, 0, -1, advanced
}
)";

// "modifiable" is off by default on purpose.
const char alphaStruct[] = R"(
struct Alpha { // Settings : "Alpha Cell", instantiable
    unsigned char type; // num, auto, 2, 2, x1, 0, "type", "", Identity, 2, -1, advanced
    char title[12]; // string, auto, "Title", Profile, "Alpha", 0, basic
    char subtitle[16]; // string, auto, "Subtitle", Profile, "first", 1, basic
    unsigned char active; // bool, 1, "active", Flags, 0, -1, basic
    unsigned char isDefault; // bool, 1, "default", Flags, 0, -1, basic
    unsigned char modifiable; // bool, 1, "modifiable", Flags, 0, -1, basic
    unsigned char balance; // bool, 5, "Balance", General, 1, 5, basic
    char mode[10]; // list, auto, "Mode", General, "Slow", 2, "Fast", "Slow", basic
    unsigned char cells; // num, auto, 1, 8, x1, 0, "Cells", "pieces", General, 3, 3, basic
    unsigned short current; // num, auto, 0.1, 20, x0.01, 2, "Current", "A", General, 2.5, 4, basic
    unsigned short cutoff; // num, auto, 0.01, current, x0.01, 2, "Cutoff", "mA", General, current / 10, 6, advanced
    unsigned short pack; // num, auto, cells * 2, cells * 5, x0.001, 3, "Pack Voltage", "V", General, cells * 4, 7, advanced
    unsigned char cold; // bool, 8, "Cold Check", General, 0, 8, advanced
    char note[8]; // string, auto, "Note", General, "none", 9, advanced
    char ending[10]; // list, auto, "Ending", General, "Stop", 10, "Stop", "Hold", advanced
    unsigned short margin; // num, auto, 0, current, x0.1, 1, "Margin", "h", General, 1, 11, basic
    unsigned char checksum; // num, auto, 0, 255, x1, 0, "checksum", "", Identity, 0, -1, advanced
}
)";

const char plainStruct[] = R"(
struct Plain { // Settings : "Plain Cell", instantiable
    unsigned char type; // num, auto, 3, 3, x1, 0, "type", "", Identity, 3, -1, advanced
    char title[12]; // string, auto, "Title", Profile, "Plain", 0, basic
    char subtitle[16]; // string, auto, "Subtitle", Profile, "second", 1, basic
    unsigned char active; // bool, 1, "active", Flags, 0, -1, basic
    unsigned char isDefault; // bool, 1, "default", Flags, 0, -1, basic
    unsigned char modifiable; // bool, 6, "modifiable", Flags, 1, -1, basic
    unsigned char capacity; // num, auto, 1, 100, x1, 0, "Capacity", "Ah", General, 10, 2, basic
    unsigned char checksum; // num, auto, 0, 255, x1, 0, "checksum", "", Identity, 0, -1, advanced
}
)";
} // namespace

QByteArray TestSchema::text()
{
    return QByteArray(globalStruct) + alphaStruct + plainStruct;
}

QByteArray TestSchema::singleChemistry()
{
    return QByteArray(globalStruct) + alphaStruct;
}

std::unique_ptr<HParser::Generator> TestSchema::parse(const QByteArray& headerText)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("schema.cb"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(headerText);
    file.close();
    auto generator = std::make_unique<HParser::Generator>(nullptr);
    generator->setHFileLocation(file.fileName());
    generator->generate();
    return generator;
}
