// Profile files under the demo's schema: imported profiles are the same after saving and loading
// them.
//
// Message boxes are slow: only every eighth size of an input has them shown.

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "profileimport/importprofilesmain.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilename.h"
#include "profiles/profilesettings.h"
#include "support/fuzzgui.h"
#include "support/fuzztarget.h"
#include "xmlformat/profiledocument.h"
#include "xmlformat/readfromxml.h"

#include <vector>

using HParser::Generator;
using HParser::StructSetting;
using ImportProfiles::ImportProfilesMain;
using XMLGeneratorParser::ProfileDocument;
using XMLGeneratorParser::ReadFromXML;

namespace
{
constexpr std::size_t boxesEvery = 8;
constexpr int mostRows = 50; // widgets are slow to create

void resetGlobalSettings(Generator& schema)
{
    const QList<StructSetting*> members =
        schema.getGlobalSettings()->getOriginalOrderStructSettings();
    for (StructSetting* setting : members) {
        setting->copyDefaultValueIntoCurrentValue();
    }
}

Generator& schemaWithGlobalSettings()
{
    Generator& schema = FuzzTarget::demoSchema();
    static ProfileSettings global;
    if (global.settings == nullptr) {
        global.makeGlobalSettings(&schema);
    }
    return schema;
}

/// The profiles of one import, each in a row as in the list.
class ImportedList
{
public:
    ImportedList(const ReadFromXML& reader, bool showsBoxes)
    {
        ImportProfilesMain importer(nullptr, &schemaWithGlobalSettings(), nullptr);
        QObject::connect(&importer, &ImportProfilesMain::profileReadyForImport,
                         [this](ProfileSettings* profile, bool active, bool isDefault) {
                             add(profile, active, isDefault);
                         });
        const FuzzGui::DialogAnswers answers;
        if (showsBoxes && reader.getGlobalSettings() != nullptr) {
            importer.importGlobalSettings(reader.getGlobalSettings());
        }
        QList<ParsedProfile*> parsed = reader.getProfiles().mid(0, mostRows);
        if (!showsBoxes) {
            QList<ParsedProfile*> known;
            for (ParsedProfile* profile : qAsConst(parsed)) {
                if (importer.canImportAny({profile})) {
                    known.append(profile);
                }
            }
            parsed = known;
        }
        importer.importProfiles(parsed, QStringLiteral("profiles.xml"));
    }

    /// Returns the file that saving the list writes.
    QString document() const
    {
        QList<const ProfileSettings*> list;
        for (const auto& profile : profiles) {
            list.append(profile.get());
        }
        return ProfileDocument::text(list, schemaWithGlobalSettings().getGlobalSettings());
    }

    int size() const { return static_cast<int>(profiles.size()); }

private:
    static ProfileName& row(int index)
    {
        static std::vector<std::unique_ptr<ProfileName>> rows;
        while (static_cast<int>(rows.size()) <= index) {
            rows.push_back(std::make_unique<ProfileName>(nullptr, nullptr));
        }
        return *rows.at(static_cast<std::size_t>(index));
    }

    void add(ProfileSettings* profile, bool active, bool isDefault)
    {
        ProfileName& shown = row(size());
        profiles.emplace_back(profile);
        shown.setProfileSettings(profile);
        shown.setTitle(profile->getTitle());
        shown.setSubtitle(profile->getSubtitle());
        shown.setActive(active);
        shown.setDefault(isDefault);
    }

    std::vector<std::unique_ptr<ProfileSettings>> profiles;
};
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzGui::startApplication();
    resetGlobalSettings(schemaWithGlobalSettings());
    const bool showsBoxes = size % boxesEvery == 0;
    ReadFromXML reader;
    FUZZ_EXPECT(reader.readProfiles(
        FuzzTarget::scratchFile(QStringLiteral("profiles.xml"), FuzzTarget::bytesOf(data, size))));
    const QString first = ImportedList(reader, showsBoxes).document();

    ReadFromXML again;
    FUZZ_EXPECT(
        again.readProfiles(FuzzTarget::scratchFile(QStringLiteral("again.xml"), first.toUtf8())));
    FUZZ_EXPECT(again.errorText().isEmpty());
    FUZZ_EXPECT(again.isProfileFile());
    const ImportedList list(again, showsBoxes);
    FUZZ_EXPECT(list.size() == again.getProfiles().size());
    FUZZ_EXPECT(list.document() == first);
    return 0;
}
