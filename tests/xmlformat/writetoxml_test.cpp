#include "xmlformat/writetoxml.h"

#include "support/filesizelimit.h"
#include "support/gui/xmlfile.h"

namespace
{
class WriteToXmlTest : public XmlFileTest
{
protected:
    bool save(const QString& name = "out.xml") { return editor.xml.exportToXML(pathOf(name)); }

    /// The document that saving makes.
    QString saved()
    {
        EXPECT_TRUE(save());
        return readFile("out.xml");
    }

    /// The text between the tags of this element's first occurrence.
    static QString element(const QString& document, const QString& tag)
    {
        const QString opening = "<" + tag + ">";
        const int start = document.indexOf(opening) + opening.size();
        EXPECT_GE(start, opening.size()) << tag;
        return document.mid(start, document.indexOf("</" + tag + ">", start) - start);
    }

    XmlEditor editor;
};

TEST_F(WriteToXmlTest, DocumentIsExactlyOfTheStatedForm)
{
    editor.import("First", true, true);
    editor.add("Second", "Plain Cell");
    const QString expected = "<KelvaronProfiles>\n"
                             "\t<GlobalSettings>\n"
                             "\t\t<charger_name>Bench</charger_name>\n"
                             "\t\t<supply_voltage>14.6</supply_voltage>\n"
                             "\t\t<key_tone>true</key_tone>\n"
                             "\t\t<fan_steps>4</fan_steps>\n"
                             "\t\t<scale>Celsius</scale>\n"
                             "\t</GlobalSettings>\n"
                             "\t<profile id=\"0\" active=\"true\" default=\"true\" "
                             "modifiable=\"true\">\n"
                             "\t\t<chemistry>Alpha Cell</chemistry>\n"
                             "\t\t<!-- Chemistry Specific Properties: -->\n"
                             "\t\t<title>First</title>\n"
                             "\t\t<subtitle>first</subtitle>\n"
                             "\t\t<mode>Slow</mode>\n"
                             "\t\t<cells>3</cells>\n"
                             "\t\t<current>2.5</current>\n"
                             "\t\t<balance>true</balance>\n"
                             "\t\t<cutoff>0.25</cutoff>\n"
                             "\t\t<pack_voltage>12</pack_voltage>\n"
                             "\t\t<cold_check>false</cold_check>\n"
                             "\t\t<note>none</note>\n"
                             "\t\t<ending>Stop</ending>\n"
                             "\t\t<margin>1</margin>\n"
                             "\t</profile>\n"
                             "\t<profile id=\"1\" active=\"false\" default=\"false\" "
                             "modifiable=\"true\">\n"
                             "\t\t<chemistry>Plain Cell</chemistry>\n"
                             "\t\t<!-- Chemistry Specific Properties: -->\n"
                             "\t\t<title>Second</title>\n"
                             "\t\t<subtitle>second</subtitle>\n"
                             "\t\t<capacity>10</capacity>\n"
                             "\t</profile>\n"
                             "</KelvaronProfiles>\n";
    EXPECT_EQ(saved(), expected);
}

TEST_F(WriteToXmlTest, EmptyListIsGlobalSettingsAlone)
{
    const QString document = saved();
    EXPECT_TRUE(startsWith(document, "<KelvaronProfiles>\n\t<GlobalSettings>\n\t\t<charger_name>"));
    EXPECT_TRUE(document.endsWith("</scale>\n\t</GlobalSettings>\n</KelvaronProfiles>\n"));
    EXPECT_FALSE(document.contains("profile id"));
}

TEST_F(WriteToXmlTest, FlagsAreThoseOfTheRow)
{
    ProfileSettings* profile = editor.import("One", true, false);
    profile->setModifiable(false);
    EXPECT_TRUE(contains(
        saved(), "<profile id=\"0\" active=\"true\" default=\"false\" modifiable=\"false\">"));
}

TEST_F(WriteToXmlTest, RowsAreNumberedInListOrder)
{
    for (const QString title : {"A", "B", "C"}) {
        editor.add(title);
    }
    editor.clickRow(2);
    clickOn(editor.ui->profileNameUpButton);
    clickOn(editor.ui->profileNameUpButton);
    const QString document = saved();
    const QStringList order = {"id=\"0\"", "<title>C", "id=\"1\"",
                               "<title>A", "id=\"2\"", "<title>B"};
    int position = 0;
    for (const QString& text : order) {
        position = document.indexOf(text, position);
        ASSERT_GE(position, 0) << text << "\n" << document;
    }
}

TEST_F(WriteToXmlTest, ChemistryIsWrittenUnescaped)
{
    editor.add("One")->chemistry = "Tom & <Jerry>";
    EXPECT_TRUE(contains(saved(), "\t\t<chemistry>Tom & <Jerry></chemistry>\n"));
}

TEST_F(WriteToXmlTest, ValuesAreEscaped)
{
    editor.add("One");
    editor.setting(0, "Subtitle")->setValue(QString("<\"a\" & 'b'>"));
    EXPECT_EQ(element(saved(), "subtitle"), "&lt;&quot;a&quot; &amp; &apos;b&apos;&gt;");
}

TEST_F(WriteToXmlTest, GlobalValuesAreEscaped)
{
    editor.generator->getGlobalSettings()->getStructSettings().at(0)->setValue(QString("a<b"));
    EXPECT_EQ(element(saved(), "charger_name"), "a&lt;b");
}

TEST_F(WriteToXmlTest, CharactersThatXmlCannotHoldAreLeftOut)
{
    editor.add("One");
    editor.setting(0, "Subtitle")->setValue(QString("a") + QChar(0) + QChar(0x1B) + QChar(0xD83D));
    EXPECT_EQ(element(saved(), "subtitle"), "a");
}

TEST_F(WriteToXmlTest, FileIsUtf8InEveryLocale)
{
    const ForeignLocale locale;
    const QString text = QString::fromUtf8("Größe Ω 電 🔋");
    editor.add("One");
    editor.setting(0, "Subtitle")->setValue(text);
    editor.setting(0, "Current")->setValue(7.25);
    const QString document = saved();
    EXPECT_EQ(element(document, "subtitle"), text);
    EXPECT_EQ(element(document, "current"), "7.25");
}

TEST_F(WriteToXmlTest, LinesEndInALineFeedAlone)
{
    editor.add("One");
    EXPECT_FALSE(saved().contains('\r'));
}

TEST_F(WriteToXmlTest, IdsHaveNoGroupSeparators)
{
    const ForeignLocale locale;
    editor.add("One");
    QList<ProfileName*> rows;
    for (int i = 0; i <= 1000; ++i) {
        rows.append(editor.row(0));
    }
    EXPECT_TRUE(XMLGeneratorParser::WriteToXML().write(pathOf("out.xml"), rows,
                                                       editor.generator->getGlobalSettings()));
    EXPECT_TRUE(contains(readFile("out.xml"), "<profile id=\"1000\" "));
}

TEST_F(WriteToXmlTest, OlderFileIsReplacedWhole)
{
    writeFile("out.xml", QString(100000, 'x'));
    const QString document = saved();
    EXPECT_TRUE(document.endsWith("</KelvaronProfiles>\n"));
    EXPECT_FALSE(document.contains("xx"));
    EXPECT_EQ(filesInFolder(), QStringList("out.xml"));
}

TEST_F(WriteToXmlTest, FolderThatDoesNotExistIsAFailure)
{
    EXPECT_FALSE(save("nowhere/out.xml"));
    EXPECT_EQ(filesInFolder(), QStringList());
    EXPECT_FALSE(QFile::exists(pathOf("nowhere")));
}

TEST_F(WriteToXmlTest, PathOfAFolderIsAFailure)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("out.xml"));
    EXPECT_FALSE(save("out.xml"));
    EXPECT_TRUE(QFileInfo(pathOf("out.xml")).isDir());
    EXPECT_EQ(filesInFolder(), QStringList());
}

TEST_F(WriteToXmlTest, FullDiskKeepsTheOlderFile)
{
    editor.add("One");
    writeFile("out.xml", "older");
    {
        const FileSizeLimit fullDisk(64);
        EXPECT_FALSE(save("out.xml"));
    }
    EXPECT_EQ(readFile("out.xml"), "older");
    EXPECT_EQ(filesInFolder(), QStringList("out.xml"));
}

TEST_F(WriteToXmlTest, FullDiskLeavesNoNewFile)
{
    editor.add("One");
    {
        const FileSizeLimit fullDisk(64);
        EXPECT_FALSE(save("new.xml"));
    }
    EXPECT_EQ(filesInFolder(), QStringList());
}

TEST(WriteToXml, FlagTexts)
{
    EXPECT_EQ(XMLGeneratorParser::WriteToXML::boolToString(true), "true");
    EXPECT_EQ(XMLGeneratorParser::WriteToXML::boolToString(false), "false");
}
} // namespace
