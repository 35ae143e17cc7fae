#pragma once

#include "CBGenerator/generator.h"
#include "support/filestest.h"
#include "support/standardoutputcapture.h"

#include <memory>

/// A test with a file of one header and the parts of such headers.
class GeneratorTest : public FilesTest
{
protected:
    GeneratorTest() { filesFolder = folder.path(); }

    /// Writes the header and returns the path of its file.
    QString written(const QByteArray& header) const
    {
        writeFile("schema.cb", header);
        return pathOf("schema.cb");
    }

    std::unique_ptr<HParser::Generator> generated(const QByteArray& header) const
    {
        auto generator = std::make_unique<HParser::Generator>(nullptr);
        generator->setHFileLocation(written(header));
        const StandardOutputCapture output;
        generator->generate();
        return generator;
    }

    /// The start address that this line defines.
    int addressOf(const QByteArray& defineLine) const
    {
        return generated(defineLine + "\n" + globalStruct + chemistryStruct)
            ->getProfileStartWordAddress();
    }

    /// The line of a flag.
    static QByteArray flagLine(const QByteArray& name, const QByteArray& index)
    {
        return "char " + name + "; // bool, 1, \"" + name + "\", G, 1, " + index + ", basic\n";
    }

    /// A whole header around the lines of one chemistry's members.
    QByteArray headerOf(const QByteArray& members) const
    {
        return define + globalStruct + "struct A { // Settings : \"A\", instantiable\n" + members
               + "}\n";
    }

    const QByteArray define = "#define PROFILESTARTADDRESS 0x0400\n";
    const QByteArray globalStruct =
        "struct GlobalSettings { // Settings : \"Global Settings\", global\n"
        "    unsigned char beeper; // bool, 1, \"Beeper\", General, 1, 0, basic\n"
        "}\n";
    const QByteArray chemistryStruct =
        "struct LiIon { // Settings : \"Li Ion\", instantiable\n"
        "    unsigned short chargeCurrent; // num, 16, 0.5, 10, x0.1, 1, \"Charge Current\", \"A\", "
        "Charging, 2.0, 0, basic\n"
        "    unsigned short cellVoltage; // num, 16, 3.0, 4.35, x0.001, 3, \"Cell Voltage\", \"V\", "
        "Charging, 4.2, 1, basic\n"
        "}\n";
    const QByteArray example = define + globalStruct + chemistryStruct;

private:
    QTemporaryDir folder;
};

using GeneratorDeathTest = GeneratorTest;
