#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "base/textfile.h"
#include "comparisontable.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"
#include "rows.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

using HParser::Generator;
using HParser::StructSetting;

namespace
{
const QString markerEnd = QStringLiteral("/\\/\\/\\");

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A chemistry of 60 settings of all kinds, with formulas that name other settings.
QString chemistryText(int number)
{
    QString text = QStringLiteral("struct Chemistry%1 { // Settings : \"Chemistry %1\", "
                                  "instantiable\n")
                       .arg(number);
    text += QStringLiteral(
                "    unsigned char type; // num, auto, %1, %1, x1, 0, \"type\", \"\", Identity, "
                "%1, -1, advanced\n"
                "    char title[20]; // string, auto, \"Title\", Profile, \"Profile\", 0, basic\n"
                "    char subtitle[24]; // string, auto, \"Subtitle\", Profile, \"none\", 1, "
                "basic\n"
                "    unsigned char active; // bool, 1, \"active\", Flags, 0, -1, basic\n"
                "    unsigned char isDefault; // bool, 1, \"default\", Flags, 0, -1, basic\n"
                "    unsigned char modifiable; // bool, 1, \"modifiable\", Flags, 1, -1, basic\n"
                "    unsigned char spare; // num, 5, 0, 31, x1, 0, \"Spare\", \"\", Flags, 0, 2, "
                "advanced\n"
                "    char mode[12]; // list, auto, \"Mode\", Charging, \"Slow\", 3, \"Slow\", "
                "\"Fast\", basic\n")
                .arg(number);
    for (int i = 8; i < 60; ++i) {
        const QString upper =
            i == 8 || i == 59 ? QStringLiteral("400") : QStringLiteral("value8 * 2 + %1").arg(i);
        text += QStringLiteral("    unsigned short value%1; // num, auto, 0.5, %2, x0.01, 2, "
                               "\"Value %1\", \"A\", Charging, 2.0, %1, basic\n")
                    .arg(i)
                    .arg(upper);
    }
    return text + QStringLiteral("}\n\n");
}

QString headerText()
{
    QString text = QStringLiteral("#define PROFILESTARTADDRESS 0x9C00\n\n"
                                  "struct GlobalSettings { // Settings : \"Global Settings\", "
                                  "global\n"
                                  "    unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", "
                                  "\"\", Identity, 1, -1, advanced\n"
                                  "    unsigned char tone; // num, auto, 0, 9, x1, 0, \"Tone\", "
                                  "\"\", Sound, 1, 0, basic\n}\n\n");
    for (int i = 2; i < 12; ++i) {
        text += chemistryText(i);
    }
    return text;
}

/// 4 MB of device description, schema and firmware, with their checksums.
QString bundleText()
{
    QString firmware;
    while (firmware.size() < 4000000) {
        firmware += QStringLiteral(":10%1000C9434C500C9451C50C9451C50C9451C5D8\n")
                        .arg(firmware.size() % 0x10000, 4, 16, QLatin1Char('0'));
    }
    QString text = QStringLiteral("...\nVERSION = 1.2.0\nMIN_SOFTWARE_VERSION_REQUIRED = "
                                  "0.9\n...\n");
    QString checksums;
    for (const QString& file : {QStringLiteral("device = kelvaron\n"), headerText(), firmware}) {
        text += markerEnd + markerEnd + QLatin1Char('\n') + file + markerEnd + markerEnd
                + QLatin1Char('\n');
        checksums += QString::fromLatin1(
            QCryptographicHash::hash(file.toUtf8(), QCryptographicHash::Md5).toHex());
        checksums += QLatin1Char('\n');
    }
    return text + markerEnd + markerEnd + QLatin1Char('\n') + checksums + markerEnd + markerEnd
           + QLatin1Char('\n');
}

/// The data that the rows of this file work on.
struct Desk
{
    Desk()
    {
        TextFile::write(headerFile, headerText());
        TextFile::write(bundleFile, bundleText());
        generator.setHFileLocation(headerFile);
        generator.generate();
        const int allowed = HEXGeneratorParser::HexUtility::numProfilesAllowed(&generator);
        for (int i = 0; i < allowed; ++i) {
            profiles.push_back(std::make_unique<ProfileSettings>());
            profiles.back()->setChemistry(QStringLiteral("Chemistry 3"), &generator);
            structs.append(profiles.back()->settings);
        }
    }

    QTemporaryDir folder;
    QString headerFile = folder.filePath(QStringLiteral("header.cb"));
    QString bundleFile = folder.filePath(QStringLiteral("v1.2.0.kelvaron"));
    QString imageFile = folder.filePath(QStringLiteral("image.hex"));
    QString copyFile = folder.filePath(QStringLiteral("copy.hex"));
    Generator generator{nullptr};
    std::vector<std::unique_ptr<ProfileSettings>> profiles;
    QList<HParser::StructSettings*> structs;
};

using SharedDesk = std::shared_ptr<Desk>;

template <typename Function>
ComparisonTable::Function repeated(Function function)
{
    return [function](benchmark::State& state) {
        for (auto iteration : state) {
            static_cast<void>(iteration);
            function();
        }
    };
}

void addHeader(ComparisonTable& table, const SharedDesk& desk)
{
    ComparisonTable::Row row;
    row.name = "parsing a header of 10 chemistries x 60 settings";
    row.floorName = "splitting its lines and fields";
    row.aim = 3;
    row.ours = repeated([desk] {
        Generator generator(nullptr);
        generator.setHFileLocation(desk->headerFile);
        generator.generate();
    });
    row.floor = repeated([desk] {
        const QString text = QString::fromUtf8(bytesOf(desk->headerFile));
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            QStringList fields = line.split(QLatin1Char(','));
            for (QString& field : fields) {
                field = field.simplified();
            }
            benchmark::DoNotOptimize(fields);
        }
    });
    table.add(row);
}

void addBundle(ComparisonTable& table, const SharedDesk& desk)
{
    ComparisonTable::Row row;
    row.name = "opening a bundle of 4 MB, checksums included";
    row.floorName = "reading it and MD5 alone";
    row.aim = 1.2;
    row.ours = repeated([desk] {
        KelvaronBundle bundle(desk->bundleFile);
        bundle.parseKeyValuePairs();
        bundle.parseBundle();
    });
    row.floor = repeated([desk] {
        benchmark::DoNotOptimize(
            QCryptographicHash::hash(bytesOf(desk->bundleFile), QCryptographicHash::Md5));
    });
    table.add(row);
}

void addImage(ComparisonTable& table, const SharedDesk& desk)
{
    ComparisonTable::Row row;
    row.name = "packing, writing, reading and unpacking a full image";
    row.floorName = "writing and reading its text and bytes";
    row.unit = "ms";
    row.ours = repeated([desk] {
        const Generator& generator = desk->generator;
        const int address = generator.getProfileStartWordAddress();
        HEXGeneratorParser::WriteToHEX().write(desk->imageFile, desk->structs,
                                               generator.getGlobalSettings(), address);
        HEXGeneratorParser::ReadFromHEX reader;
        reader.read(desk->imageFile, address);
        const QList<ParsedProfile*> parsed = reader.parseProfiles(&generator);
        if (parsed.size() < desk->structs.size()) {
            qFatal("the image lost profiles");
        }
    });
    row.ours = [desk, ours = row.ours](benchmark::State& state) { ours(state); };
    row.floor = [desk](benchmark::State& state) {
        HEXGeneratorParser::WriteToHEX().write(desk->imageFile, desk->structs,
                                               desk->generator.getGlobalSettings(),
                                               desk->generator.getProfileStartWordAddress());
        const QString text = QString::fromLatin1(bytesOf(desk->imageFile));
        for (auto iteration : state) {
            static_cast<void>(iteration);
            TextFile::write(desk->copyFile, text);
            const QByteArray bytes = bytesOf(desk->copyFile);
            benchmark::DoNotOptimize(QByteArray::fromHex(bytes));
        }
    };
    table.add(row);
}

void addEdit(ComparisonTable& table, const SharedDesk& desk)
{
    constexpr int dependents = 50;
    ComparisonTable::Row row;
    row.name = "one edit that moves 50 dependent bounds";
    row.floorName = "50 direct evaluations";
    row.aim = 1.5;
    row.unit = "us";
    row.ours = [desk](benchmark::State& state) {
        ProfileSettings profile;
        profile.setChemistry(QStringLiteral("Chemistry 3"), &desk->generator);
        StructSetting* edited =
            profile.settings->getStructSettingByDescriptiveName(QStringLiteral("Value 8"));
        double value = 3;
        for (auto iteration : state) {
            static_cast<void>(iteration);
            edited->setValue(value);
            value = 7 - value;
        }
    };
    row.floor = [](benchmark::State& state) {
        double value = 3;
        std::vector<double> bounds(dependents);
        for (auto iteration : state) {
            static_cast<void>(iteration);
            for (int i = 0; i < dependents; ++i) {
                // A formula uses a setting's text, which has 6 significant digits.
                const double named = QString::number(value, 'g', 6).toDouble();
                bounds[static_cast<std::size_t>(i)] = named * 2 + i;
            }
            benchmark::DoNotOptimize(bounds.data());
            value = 7 - value;
        }
    };
    table.add(row);
}
} // namespace

void BenchmarkRows::addCore(ComparisonTable& table)
{
    const auto desk = std::make_shared<Desk>();
    addHeader(table, desk);
    addBundle(table, desk);
    addImage(table, desk);
    addEdit(table, desk);
}
