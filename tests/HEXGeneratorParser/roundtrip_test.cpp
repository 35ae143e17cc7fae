// Random schemas and profile lists travel through a HEX file and back. What comes back is what went
// out, except where the image itself cannot hold it: those losses are listed here, each with the
// rule that it follows.

#include "CBGenerator/formula.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "base/xmlutility.h"
#include "profileimport/parsedprofile.h"
#include "support/chargerschema.h"
#include "support/imagesupport.h"
#include "support/standardoutputcapture.h"

#include <cmath>
#include <map>
#include <random>
#include <vector>

using HEXGeneratorParser::HexUtility;
using HEXGeneratorParser::ReadFromHEX;
using HEXGeneratorParser::WriteToHEX;
using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
constexpr int schemaCount = 500;

enum class Loss
{
    None,
    FractionOfACount,   // numbers are stored in whole counts of the scale factor
    Negative,           // numbers are read back without a sign
    TooManyBits,        // numbers are cut to their bits or bytes
    BeyondSigned32Bits, // counts are signed 32-bit numbers on their way into the image
    FormulaAsScale,     // the reader takes a scale factor's text, which must be a number
    LongText,           // texts are cut to make room for their terminating zero
    NothingErasedBehind // whole rows are written: behind 256 bytes no erased byte ends the image
};

const char* nameOf(Loss loss)
{
    switch (loss) {
    case Loss::None:
        return "none";
    case Loss::FractionOfACount:
        return "fraction of a count";
    case Loss::Negative:
        return "negative number";
    case Loss::TooManyBits:
        return "number with too many bits";
    case Loss::BeyondSigned32Bits:
        return "number beyond 31 bits";
    case Loss::FormulaAsScale:
        return "scale factor that is a formula";
    case Loss::LongText:
        return "text longer than its array";
    case Loss::NothingErasedBehind:
        return "no erased byte behind the image";
    }
    return "";
}

/// Draws schemas and values. The seed is fixed: a failure comes again.
class Dice
{
public:
    explicit Dice(unsigned int seed) : engine(seed) {}

    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }

    bool oneIn(int count) { return between(1, count) == 1; }

    template <typename T>
    const T& oneOf(const std::vector<T>& items)
    {
        return items.at(static_cast<std::size_t>(between(0, static_cast<int>(items.size()) - 1)));
    }

private:
    std::mt19937 engine;
};

class RandomSchema
{
public:
    explicit RandomSchema(Dice& randomDice) : dice(randomDice) {}

    QByteArray header()
    {
        QByteArray chemistries;
        const int count = dice.between(1, 4);
        for (int i = 0; i < count; ++i) {
            chemistries += chemistry(i);
        }
        // Every image lies inside the flash memory and starts with a row.
        const int address = dice.between(0, (0x30000 - 2048) / 256) * 128;
        return ChargerSchema::header(chemistries, QByteArray::number(address).constData());
    }

private:
    QByteArray chemistry(int index)
    {
        const QByteArray type = QByteArray::number(2 + 60 * index + dice.between(0, 59));
        QByteArray members = ChargerSchema::typeMember(type);
        const int flagsAt = dice.between(0, 3);
        const int groups = dice.between(4, 24);
        for (int i = 0; i < groups; ++i) {
            members += i == flagsAt ? ChargerSchema::flagMembers : group();
        }
        members += ChargerSchema::checksumMember;
        if (dice.oneIn(4)) {
            members += group(); // the checksum does not cover it
        }
        return ChargerSchema::chemistry("Chemistry " + QByteArray::number(index), members);
    }

    QByteArray group()
    {
        switch (dice.between(0, 4)) {
        case 0:
            return bits();
        case 1:
            return text("string", "");
        case 2:
            return text("list", "\"One\", \"Two\", ");
        case 3:
            return "    unsigned char " + nextName() + "; // bool, auto, " + quotedName()
                   + ", G, 1, 0, basic\n";
        default:
            return number("auto");
        }
    }

    QByteArray bits()
    {
        QByteArray members;
        for (int left = 8 * dice.between(1, 2); left > 0;) {
            const int width = dice.between(1, std::min(left, 8));
            members += dice.oneIn(3)
                           ? "    char " + nextName() + "; // bool, " + QByteArray::number(width)
                                 + ", " + quotedName() + ", G, 1, 0, basic\n"
                           : number(QByteArray::number(width));
            left -= width;
        }
        return members;
    }

    QByteArray number(const QByteArray& size)
    {
        const QByteArray type = dice.oneOf<QByteArray>(
            {"char", "unsigned char", "short", "unsigned short", "int", "long", "unsigned long"});
        const QByteArray scale =
            dice.oneIn(40)
                ? "1 / 2"
                : dice.oneOf<QByteArray>({"1", "0.1", "0.01", "0.001", "0.5", "5", "100"});
        return "    " + type + ' ' + nextName() + "; // num, " + size + ", -1000000, 1000000, x"
               + scale + ", 3, " + quotedName() + ", \"V\", G, 0, 0, basic\n";
    }

    QByteArray text(const QByteArray& kind, const QByteArray& items)
    {
        return "    char " + nextName() + '[' + QByteArray::number(dice.between(1, 24)) + "]; // "
               + kind + ", auto, " + quotedName() + ", G, \"\", 0, " + items + "basic\n";
    }

    QByteArray nextName() { return 'm' + QByteArray::number(++names); }
    QByteArray quotedName() const { return "\"Setting " + QByteArray::number(names) + '"'; }

    Dice& dice;
    int names = 0;
};

/// Gives every setting a random value.
class RandomValues
{
public:
    explicit RandomValues(Dice& randomDice) : dice(randomDice) {}

    void fill(const StructSettings& profile)
    {
        const QList<StructSetting*> members = profile.getOriginalOrderStructSettings();
        for (StructSetting* setting : members) {
            if (setting->descriptiveName != QLatin1String("type")) {
                setting->storeValueFromText(valueFor(*setting));
            }
        }
    }

private:
    QString valueFor(const StructSetting& setting)
    {
        switch (setting.settingType) {
        case StructSetting::NUM:
            return QString::number(number(setting), 'g', 6);
        case StructSetting::BOOL:
            return dice.oneIn(2) ? "true" : "false";
        default:
            return text(setting.arraySize - 1 + (dice.oneIn(30) ? 3 : 0));
        }
    }

    double number(const StructSetting& setting)
    {
        const double scale = setting.scaleFactor->toDouble();
        switch (dice.between(0, 30)) {
        case 0:
            return -scale * dice.between(1, 100);
        case 1:
            return scale * (dice.between(1, 100) + 0.4);
        case 2:
            return scale * dice.between(0, 999999);
        case 3:
            return scale * 3e9;
        default:
            const int width = setting.size == QLatin1String("auto")
                                  ? 8 * HexUtility::calculateByteCount(setting.variableDataType)
                                  : setting.size.toInt();
            return scale * dice.between(0, std::min(999999, (1 << std::min(width, 20)) - 1));
        }
    }

    QString text(int length)
    {
        QString characters;
        const int count = length <= 0 ? 0 : dice.between(length / 2, length);
        for (int i = 0; i < count; ++i) {
            characters.append(QChar(dice.between(0x20, 0x7E)));
        }
        return characters;
    }

    Dice& dice;
};

struct Expectation
{
    Loss loss = Loss::None;
    QString text;
};

int widthOf(const StructSetting& setting)
{
    return setting.size == QLatin1String("auto")
               ? 8 * HexUtility::calculateByteCount(setting.variableDataType)
               : setting.size.toInt();
}

Expectation expectedNumber(const StructSetting& setting)
{
    const double value = setting.getValue().toDouble();
    bool isNumber = false;
    const double readScale = setting.scaleFactor->toString().toDouble(&isNumber);
    if (!isNumber) {
        return {Loss::FormulaAsScale, "0"};
    }
    const double count = value / readScale;
    const double whole = std::floor(count + 0.5);
    const auto backFrom = [&](double raw) {
        const qint64 range = qint64(1) << widthOf(setting);
        const qint64 stored = ((static_cast<qint64>(raw) % range) + range) % range;
        return QString::number(static_cast<double>(stored) * readScale, 'g', 6);
    };
    if (whole > 2147483647.0) {
        return {Loss::BeyondSigned32Bits, backFrom(2147483647.0)};
    }
    if (whole < 0) {
        return {Loss::Negative, backFrom(whole)};
    }
    if (whole >= static_cast<double>(qint64(1) << widthOf(setting))) {
        return {Loss::TooManyBits, backFrom(whole)};
    }
    if (std::abs(count - whole) > 1e-6) {
        return {Loss::FractionOfACount, backFrom(whole)};
    }
    return {Loss::None, setting.getValue()};
}

Expectation expectationFor(const StructSetting& setting)
{
    if (setting.settingType == StructSetting::NUM) {
        return expectedNumber(setting);
    }
    const QString text = setting.getValue();
    const bool isText = setting.settingType != StructSetting::BOOL;
    if (isText && text.size() > setting.arraySize - 1) {
        return {Loss::LongText, text.left(setting.arraySize - 1)};
    }
    return {Loss::None, text};
}

class HexRoundTripTest : public ::testing::Test
{
protected:
    /// One schema and one list; the list stands in `profiles` and comes back in `read`.
    void travel()
    {
        generator = ImageSupport::generatorOf(RandomSchema(dice).header());
        makeProfiles();
        const QString path = folder.filePath("random.hex");
        QList<StructSettings*> list;
        for (const auto& profile : profiles) {
            list.append(profile.get());
        }
        ASSERT_TRUE(WriteToHEX().write(path, list, generator->getGlobalSettings(),
                                       generator->getProfileStartWordAddress()));
        const StandardOutputCapture capture;
        ReadFromHEX reader;
        ASSERT_TRUE(reader.read(path, generator->getProfileStartWordAddress()));
        int error = -1;
        QList<ParsedProfile*> read;
        try {
            read = reader.parseProfiles(generator.get());
        } catch (int code) {
            error = code;
        }
        if (imageSize() % 256 == 0) {
            // Also an empty list. The file holds nothing behind it, which reads as type 0.
            EXPECT_EQ(error, static_cast<int>(ReadFromHEX::TYPE_ERROR));
            ++losses[Loss::NothingErasedBehind];
            return;
        }
        ASSERT_EQ(error, -1) << capture.text();
        compare(read);
    }

    std::map<Loss, int> losses;
    int profilesSeen = 0;

private:
    void makeProfiles()
    {
        profiles.clear();
        const int allowed = HexUtility::numProfilesAllowed(generator.get());
        const QList<StructSettings*> chemistries = generator->getChemistrySettings();
        const int count = dice.oneIn(10) ? allowed : dice.between(0, allowed);
        for (int i = 0; i < count; ++i) {
            const StructSettings* chemistry =
                chemistries.at(dice.between(0, chemistries.size() - 1));
            profiles.push_back(
                ImageSupport::profileOf(*generator, chemistry->getDescriptiveName()));
            RandomValues(dice).fill(*profiles.back());
        }
    }

    int imageSize() const
    {
        int size = 0;
        for (const auto& profile : profiles) {
            size += HexUtility::getChemistrySize(profile.get());
        }
        return size;
    }

    void compare(const QList<ParsedProfile*>& read)
    {
        ASSERT_EQ(read.size(), static_cast<int>(profiles.size()));
        for (int i = 0; i < read.size(); ++i) {
            const StructSettings& sent = *profiles.at(static_cast<std::size_t>(i));
            EXPECT_EQ(read.at(i)->getProperties().value("chemistry"), sent.getDescriptiveName());
            compareSettings(sent, *read.at(i));
            ++profilesSeen;
        }
    }

    void compareSettings(const StructSettings& sent, const ParsedProfile& read)
    {
        const std::map<QString, bool> flags = {{"active", read.getActiveStatus()},
                                               {"default", read.getDefaultStatus()},
                                               {"modifiable", read.getModifiableStatus()}};
        const QList<StructSetting*> members = sent.getOriginalOrderStructSettings();
        for (const StructSetting* setting : members) {
            const QString name = setting->descriptiveName;
            if (name == "type" || name == "checksum") {
                continue;
            }
            const auto flag = flags.find(name);
            if (flag != flags.end()) {
                EXPECT_EQ(flag->second, setting->isOn()) << name.toStdString();
                continue;
            }
            const Expectation expected = expectationFor(*setting);
            ++losses[expected.loss];
            EXPECT_EQ(read.getProperties()
                          .value(XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(name))
                          .toStdString(),
                      expected.text.toStdString())
                << nameOf(expected.loss) << ", " << setting->getValue().toStdString() << " in "
                << setting->size.toStdString() << ' ' << setting->variableDataType.toStdString();
        }
    }

    Dice dice{20261121};
    std::unique_ptr<HParser::Generator> generator;
    std::vector<std::unique_ptr<StructSettings>> profiles;
    QTemporaryDir folder;
};
} // namespace

TEST_F(HexRoundTripTest, GivesBackEveryValueThatTheImageCanHold)
{
    for (int i = 0; i < schemaCount && !HasFailure(); ++i) {
        travel();
    }
    EXPECT_GT(profilesSeen, schemaCount);
    for (const Loss loss : {Loss::None, Loss::FractionOfACount, Loss::Negative, Loss::TooManyBits,
                            Loss::BeyondSigned32Bits, Loss::FormulaAsScale, Loss::LongText,
                            Loss::NothingErasedBehind}) {
        EXPECT_GT(losses[loss], 0) << nameOf(loss);
        RecordProperty(nameOf(loss), losses[loss]);
        std::cout << "values with loss: " << nameOf(loss) << ": " << losses[loss] << '\n';
    }
    std::cout << "profiles: " << profilesSeen << '\n';
}

// A text is filled up by characters, not bytes: one beyond ASCII moves everything behind it.
TEST(HexRoundTrip, ATextBeyondAsciiMakesTheImageUnreadable)
{
    const auto generator = ImageSupport::generatorOf(ChargerSchema::header(ChargerSchema::chemistry(
        "A", ChargerSchema::typeMember("3") + ChargerSchema::titleMember
                 + ChargerSchema::flagMembers + ChargerSchema::checksumMember)));
    const auto profile = ImageSupport::profileOf(*generator, "A");
    const QTemporaryDir folder;
    const QString path = folder.filePath("text.hex");
    const auto errorFor = [&](const char* title) {
        ImageSupport::setValue(*profile, "Title", title);
        EXPECT_TRUE(
            WriteToHEX().write(path, {profile.get()}, generator->getGlobalSettings(), 0x9C00));
        const StandardOutputCapture capture;
        ReadFromHEX reader;
        EXPECT_TRUE(reader.read(path, 0x9C00));
        try {
            reader.parseProfiles(generator.get());
        } catch (int error) {
            return error;
        }
        return -1;
    };
    EXPECT_EQ(errorFor("Pouch"), -1);
    EXPECT_EQ(errorFor("Pouch ä"), static_cast<int>(ReadFromHEX::CHECKSUM_ERROR));
}
