#pragma once

#include "profileimport/parsedprofile.h"
#include "support/gui/editorwindow.h"

using ImportProfiles::ImportProfilesMain;

class ImportTest : public ::testing::Test
{
protected:
    using Properties = QMap<QString, QString>;

    ~ImportTest() override
    {
        qDeleteAll(parsed);
        flushDeletions();
    }

    /// A profile of "Alpha Cell" with its default values, some of them replaced.
    ParsedProfile* alpha(const Properties& changes = {})
    {
        Properties properties = {{"chemistry", "Alpha Cell"},
                                 {"title", "Alpha"},
                                 {"subtitle", "first"},
                                 {"mode", "Slow"},
                                 {"cells", "3"},
                                 {"current", "2.5"},
                                 {"balance", "true"},
                                 {"cutoff", "0.25"},
                                 {"pack_voltage", "12"},
                                 {"cold_check", "false"},
                                 {"note", "none"},
                                 {"ending", "Stop"},
                                 {"margin", "1"}};
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            properties[change.key()] = change.value();
        }
        return make(properties);
    }

    ParsedProfile* global(const Properties& changes = {})
    {
        Properties properties = {{"charger_name", "Bench"},
                                 {"supply_voltage", "14.6"},
                                 {"key_tone", "true"},
                                 {"fan_steps", "4"},
                                 {"scale", "Celsius"}};
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            properties[change.key()] = change.value();
        }
        return make(properties);
    }

    ParsedProfile* make(const Properties& properties)
    {
        auto* profile = new ParsedProfile;
        profile->setProperties(properties);
        parsed.append(profile);
        return profile;
    }

    QString value(int row, const char* name) const { return window.setting(row, name)->getValue(); }

    bool isEdited(int row) const
    {
        return window.row(row)->getProfileSettings()->settings->getAdvancedSettingsEdited();
    }

    HParser::StructSetting* globalSetting(const char* name) const
    {
        return window.generator->getGlobalSettings()->getStructSettingByDescriptiveName(name);
    }

    /// Imports profiles and expects a message with these changes, one per line.
    static void importWithChanges(ImportProfilesMain* importer,
                                  const QList<ParsedProfile*>& profiles, const QStringList& changes)
    {
        DialogScript script;
        script.expectImportChanges(changes);
        importer->importProfiles(profiles);
    }

    QList<ParsedProfile*> parsed;
    EditorWindow window;
};
