// Random schemas and profile lists are written to a HEX file and read back. The profiles must be
// unchanged, except for the losses of the image itself: these are listed here, each with its rule.

#include "CBGenerator/formula.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "base/xmlutility.h"
#include "profileimport/parsedprofile.h"
#include "support/imagesupport.h"
#include "support/randomschema.h"
#include "support/standardoutputcapture.h"

#include <cmath>
#include <map>

using HEXGeneratorParser::ReadFromHEX;
using HEXGeneratorParser::WriteToHEX;

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
    NothingErasedBehind // whole rows are written: after 256 bytes no erased byte ends the image
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
    /// One schema and one list; `profiles` is the list written, `read` the list read back.
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
            // Also for an empty list: nothing follows in the file, which reads as type 0.
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
                EXPECT_EQ(flag->second, setting->isOn()) << name;
                continue;
            }
            const Expectation expected = expectationFor(*setting);
            ++losses[expected.loss];
            EXPECT_EQ(read.getProperties().value(
                          XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(name)),
                      expected.text)
                << nameOf(expected.loss) << ", " << setting->getValue() << " in " << setting->size
                << ' ' << setting->variableDataType;
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

// A text is filled up by characters, not bytes: one beyond ASCII moves everything after it.
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
