// A long list of many values whose bundle is replaced.

#include "applicationglobalmap.h"
#include "support/gui/reloadbundletest.h"
#include "xmlformat/readfromxml.h"

namespace
{
/// The content of the list's rows: flags, and the text of every visible setting by its name.
struct RowContent
{
    QString chemistry;
    bool active = false;
    bool isDefault = false;
    bool modifiable = false;
    QMap<QString, QString> values;
};

bool operator==(const RowContent& one, const RowContent& other)
{
    return one.chemistry == other.chemistry && one.active == other.active
           && one.isDefault == other.isDefault && one.modifiable == other.modifiable
           && one.values == other.values;
}

class LongListReloadTest : public ReloadBundleTest
{
protected:
    static constexpr int profileCount = 50;

    /// Loads 50 profiles of both chemistries, each with values of its own.
    LongListReloadTest()
    {
        QFile file(pathOf("saved_profiles/fifty.xml"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<KelvaronProfiles>\n");
        for (int i = 0; i < profileCount; ++i) {
            file.write(profile(i).toUtf8());
        }
        file.write("</KelvaronProfiles>\n");
        file.close();
        DialogScript script;
        script.expectImportDialog("XML", pathOf("saved_profiles"), "fifty.xml");
        trigger(command("actionImportXML"));
        script.finish();
    }

    static bool isPlain(int number) { return number % 3 == 0; }
    static QString title(int number) { return QString("No. %1 <&").arg(number); }

    static QString profile(int number)
    {
        const QString own =
            isPlain(number) ? QString("<capacity>%1</capacity>").arg(number + 1)
                            : QString("<mode>Fast</mode><cells>%1</cells><current>%2</current>"
                                      "<balance>true</balance><cutoff>0.%1</cutoff><note>n%1</note>"
                                      "<pack_voltage>%3</pack_voltage><cold_check>true</cold_check>"
                                      "<ending>Hold</ending><margin>0</margin>")
                                  .arg(number % 8 + 1)
                                  .arg(0.25 * number + 1)
                                  .arg(3.5 * (number % 8 + 1));
        return QString("<profile id=\"%1\" active=\"%2\" default=\"%3\" modifiable=\"true\">"
                       "<chemistry>%4</chemistry><title>%5</title><subtitle>s%1</subtitle>%6"
                       "</profile>\n")
            .arg(QString::number(number), number % 2 == 0 ? "true" : "false",
                 number == 7 ? "true" : "false", isPlain(number) ? "Plain Cell" : "Alpha Cell",
                 title(number).toHtmlEscaped(), own);
    }

    QList<RowContent> contents() const
    {
        QList<RowContent> all;
        for (int i = 0; i < list()->count(); ++i) {
            const ProfileSettings& settings = *row(i)->getProfileSettings();
            RowContent content{settings.chemistry,
                               row(i)->getActiveStatus(),
                               row(i)->getDefaultStatus(),
                               settings.getModifiable(),
                               {}};
            const QList<HParser::StructSetting*> visible = settings.settings->getStructSettings();
            for (const HParser::StructSetting* setting : visible) {
                content.values.insert(setting->descriptiveName, setting->getValue());
            }
            all.append(content);
        }
        return all;
    }
};
} // namespace

TEST_F(LongListReloadTest, EveryValueComesBack)
{
    const QList<RowContent> before = contents();
    ASSERT_EQ(before.size(), profileCount);
    ASSERT_TRUE(before.at(7).isDefault);
    ASSERT_EQ(before.at(49).values.value("Current"), "13.25");
    installBundle("1.2", TestSchema::text());
    const DialogScript nothing;
    flash();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.2");
    EXPECT_EQ(contents(), before);
}

TEST_F(LongListReloadTest, LosesExactlyWhatTheNewSchemaHasNot)
{
    QByteArray newer = TestSchema::singleChemistry(); // without "Plain Cell"
    newer.replace("\"Current\"", "\"Charge Current\"");
    const int note = newer.indexOf("    char note[8]");
    newer.remove(note, newer.indexOf('\n', note) + 1 - note);
    installBundle("1.2", newer);

    QList<RowContent> expected;
    QStringList leftOut;
    const QList<RowContent> before = contents();
    for (int i = 0; i < profileCount; ++i) {
        if (isPlain(i)) {
            leftOut.append(QString("\"%1\" (chemistry \"Plain Cell\")").arg(title(i)));
            continue;
        }
        RowContent content = before.at(i);
        content.values.remove("Note");
        content.values.remove("Current");
        content.values.insert("Charge Current", "0");
        expected.append(content);
    }
    DialogScript script;
    script.expectMessage(
        "Profiles Left Out",
        "17 profiles were left out, because the Kelvaron Bundle in use does not "
        "know their chemistries:\n\n"
            + leftOut.join('\n')
            + "\n\nThey are still in the file backup_fw_update.xml. Load that file "
              "when a bundle that knows them is in use.");
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Reloaded With Changes");
        for (const char* change :
             {"Charge Current is missing and is now 0", "\"current\" is unknown and was left out",
              "\"note\" is unknown and was left out"}) {
            EXPECT_TRUE(contains(
                box.text(),
                QString(change) + " (\"No. 1 <&\", \"No. 2 <&\", \"No. 4 <&\" and 30 more)\n"));
        }
    });
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_NE(tool, nullptr);
    emit tool->flashed();
    script.finish();
    tool->close();
    flushDeletions();
    EXPECT_EQ(contents(), expected);

    XMLGeneratorParser::ReadFromXML backup;
    ASSERT_TRUE(backup.readProfiles(pathOf("backup_fw_update.xml")));
    EXPECT_EQ(backup.getProfiles().size(), profileCount);
}

TEST_F(LongListReloadTest, ABackupThatCannotBeWrittenKeepsListAndSchema)
{
    const QList<RowContent> before = contents();
    installBundle("1.2", newerSchema());
    ASSERT_TRUE(QDir().mkdir(pathOf("backup_fw_update.xml")));
    DialogScript script;
    script.expectMessage("Bundle Not Reloaded",
                         "The profiles could not be backed up, so the bundle in use was kept. "
                         "Please save the profiles to a file and restart the program.");
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_NE(tool, nullptr);
    emit tool->flashed();
    script.finish();
    tool->close();
    flushDeletions();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.1");
    EXPECT_EQ(contents(), before);
}
