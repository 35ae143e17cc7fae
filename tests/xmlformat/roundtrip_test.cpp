// Saving and loading preserves everything in the editor.

#include "CBGenerator/formula.h"
#include "support/gui/xmlfile.h"
#include "testpaths.h"

#include <QProcess>

#include <random>

using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
constexpr unsigned int seed = 20260417;
constexpr int profileCount = 300;

/// The content of one struct of settings, a profile's or the global one, at a moment.
struct Snapshot
{
    QString chemistry;
    bool active = false;
    bool isDefault = false;
    bool modifiable = false;
    bool advancedEdited = false;
    QStringList texts;
    QList<double> numbers;
};

Snapshot snapshotOf(const StructSettings& settings)
{
    Snapshot snapshot;
    snapshot.advancedEdited = settings.getAdvancedSettingsEdited();
    const QList<StructSetting*> visible = settings.getStructSettings();
    for (const StructSetting* setting : visible) {
        snapshot.texts.append(setting->getValue());
        snapshot.numbers.append(setting->number());
    }
    return snapshot;
}

Snapshot snapshotOf(const ProfileName& row)
{
    const ProfileSettings& profile = *row.getProfileSettings();
    Snapshot snapshot = snapshotOf(*profile.settings);
    snapshot.chemistry = profile.chemistry;
    snapshot.active = row.getActiveStatus();
    snapshot.isDefault = row.getDefaultStatus();
    snapshot.modifiable = profile.getModifiable();
    return snapshot;
}

void expectEqual(const Snapshot& loaded, const Snapshot& saved)
{
    EXPECT_EQ(loaded.chemistry, saved.chemistry);
    EXPECT_EQ(loaded.active, saved.active);
    EXPECT_EQ(loaded.isDefault, saved.isDefault);
    EXPECT_EQ(loaded.modifiable, saved.modifiable);
    EXPECT_EQ(loaded.advancedEdited, saved.advancedEdited);
    EXPECT_EQ(loaded.texts, saved.texts);
    EXPECT_EQ(loaded.numbers, saved.numbers);
}

/// Values from a sequence that is the same in every run.
class RandomValues
{
public:
    /// Sets every visible setting, advanced ones only if they are to be edited.
    void fill(const StructSettings& settings, bool editsAdvanced)
    {
        const QList<StructSetting*> visible = settings.getStructSettings();
        for (StructSetting* setting : visible) {
            setting->enableAdvancedMode(editsAdvanced);
        }
        for (StructSetting* setting : visible) {
            if (setting->isBasic || editsAdvanced) {
                fill(*setting);
            }
        }
    }

    bool coin() { return below(2) == 0; }

    int below(int end) { return static_cast<int>(generator() % static_cast<unsigned int>(end)); }

private:
    void fill(StructSetting& setting)
    {
        switch (setting.settingType) {
        case StructSetting::NUM:
            setting.setValue(number(setting));
            break;
        case StructSetting::BOOL:
            setting.setValue(coin());
            break;
        case StructSetting::STRING:
            setting.setValue(text(below(setting.arraySize + 3)));
            break;
        case StructSetting::LIST:
            setting.setValue(setting.list.at(below(setting.list.size())));
            break;
        case StructSetting::UNKNOWN:
            FAIL() << "never in the visual order";
        }
    }

    double number(const StructSetting& setting)
    {
        const double lower = setting.lowerBound->toDouble();
        const double upper = setting.upperBound->toDouble();
        switch (below(6)) {
        case 0:
            return lower;
        case 1:
            return upper;
        default:
            return lower + (upper - lower) * below(100001) / 100000;
        }
    }

    QString text(int pieceCount)
    {
        static const QStringList pieces = {"a",
                                           "Z",
                                           "9",
                                           " ",
                                           "  ",
                                           "\t",
                                           "\n",
                                           "\r",
                                           "\r\n",
                                           "<",
                                           ">",
                                           "&",
                                           "\"",
                                           "'",
                                           "&amp;",
                                           "<b>",
                                           "</title>",
                                           "]]>",
                                           "<!--",
                                           "-->",
                                           "<?",
                                           "%",
                                           "\\",
                                           QString::fromUtf8("ä"),
                                           QString::fromUtf8("e\u0301"),
                                           QString::fromUtf8("n\u0303\u0323"),
                                           QString::fromUtf8("Ω"),
                                           QString::fromUtf8("充電"),
                                           QString::fromUtf8("שלום"),
                                           QString::fromUtf8("🔋"),
                                           QString::fromUtf8("👩‍🔧"),
                                           QString::fromUtf8("𝔘"),
                                           QString(QChar(0x7F)),
                                           QString(QChar(0x85)),
                                           QString(QChar(0xA0)),
                                           QString(QChar(0x200B)),
                                           QString(QChar(0x2028)),
                                           QString(QChar(0xFEFF)),
                                           QString(QChar(0xFFFD))};
        QString result;
        for (int i = 0; i < pieceCount; ++i) {
            result += pieces.at(below(pieces.size()));
        }
        return result;
    }

    std::mt19937 generator{seed};
};

class RoundTripTest : public XmlFileTest
{
protected:
    static QByteArray demoSchema()
    {
        QFile file(KELVARON_DEMO_DIR "/kelvaron_chemistries.cb");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    /// Saves random profiles over all chemistries and global settings; remembers what they were.
    void saveRandomProfiles(RandomValues& random)
    {
        XmlEditor editor(demoSchema());
        editor.hide();
        editor.list->holdBackRows();
        const QList<StructSettings*> chemistries = editor.generator->getChemistrySettings();
        ASSERT_GE(chemistries.size(), 3);
        for (int i = 0; i < profileCount; ++i) {
            auto* profile = new ProfileSettings;
            profile->setChemistry(chemistries.at(i % chemistries.size())->getDescriptiveName(),
                                  editor.generator);
            const bool editsAdvanced = random.coin();
            random.fill(*profile->settings, editsAdvanced);
            profile->settings->setAdvancedSettingsEdited(
                ImportProfiles::ImportProfilesMain::getAdvancedSettingsEdited(profile->settings));
            profile->setModifiable(random.coin());
            const bool active = random.coin();
            editor.list->on_profileReadyForImport(profile, active,
                                                  active && i > 10 && random.below(20) == 0);
        }
        editor.list->showHeldBackRows();
        StructSettings* global = editor.generator->getGlobalSettings();
        random.fill(*global, true);
        global->setAdvancedSettingsEdited(
            ImportProfiles::ImportProfilesMain::getAdvancedSettingsEdited(global));
        globalSaved = snapshotOf(*global);
        for (int i = 0; i < profileCount; ++i) {
            saved.push_back(snapshotOf(*editor.row(i)));
        }
        ASSERT_TRUE(editor.xml.exportToXML(pathOf("profiles.xml")));
    }

    std::vector<Snapshot> saved;
    Snapshot globalSaved;
};

TEST_F(RoundTripTest, ThreeHundredRandomProfilesComeBack)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomValues random;
    ASSERT_NO_FATAL_FAILURE(saveRandomProfiles(random));

    EXPECT_EQ(QProcess::execute("xmllint", {"--noout", pathOf("profiles.xml")}), 0)
        << "xmllint comes with Debian's package libxml2-utils";

    XmlEditor editor(demoSchema());
    editor.hide();
    DialogScript script;
    script.expectGlobalSettingsQuestion("Yes");
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Imported With Changes");
        // Texts of all alphabets were saved; nothing else must be reported.
        const QString changes = box.text().section("\n\n", 1, 1);
        const QStringList lines = changes.split('\n');
        for (const QString& line : lines) {
            EXPECT_TRUE(line.contains("the charger cannot hold") || line.startsWith("and "))
                << line;
        }
    });
    editor.xml.importFromXML(pathOf("profiles.xml"));
    script.finish();
    ASSERT_EQ(editor.count(), profileCount);
    for (int i = 0; i < profileCount; ++i) {
        SCOPED_TRACE("profile " + std::to_string(i));
        expectEqual(snapshotOf(*editor.row(i)), saved.at(static_cast<std::size_t>(i)));
    }
    expectEqual(snapshotOf(*editor.generator->getGlobalSettings()), globalSaved);

    // Saved once more, the file is the same to the byte.
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("again.xml")));
    EXPECT_TRUE(readFile("again.xml") == readFile("profiles.xml"));
}
} // namespace
