#include "xmlformat/readfromxml.h"

#include "profileimport/parsedprofile.h"
#include "support/gui/xmlfile.h"

namespace
{
class ReadFromXmlTest : public XmlFileTest
{
protected:
    /// Reads a document with this text and expects no error.
    void read(const QString& document)
    {
        readBroken(document);
        EXPECT_EQ(reader.errorText(), "");
    }

    /// The same without a check for errors.
    void readBroken(const QString& document)
    {
        EXPECT_TRUE(reader.readProfiles(writeFile("in.xml", document)));
    }

    QStringList titles() const
    {
        QStringList result;
        const QList<ParsedProfile*> profiles = reader.getProfiles();
        for (const ParsedProfile* profile : profiles) {
            result.append(profile->getProperties().value("title"));
        }
        return result;
    }

    const ParsedProfile& profile(int index) const { return *reader.getProfiles().at(index); }

    static QString inRoot(const QString& content)
    {
        return "<KelvaronProfiles>\n" + content + "</KelvaronProfiles>\n";
    }

    static QString profileText(const QString& id, const QString& title)
    {
        return "<profile id=\"" + id + "\"><title>" + title + "</title></profile>\n";
    }

    XMLGeneratorParser::ReadFromXML reader;
};

TEST_F(ReadFromXmlTest, ElementsBecomeKeysAndTexts)
{
    read(inRoot("\t<GlobalSettings>\n\t\t<fan>4</fan>\n\t\t<name/>\n\t</GlobalSettings>\n"
                "\t<profile id=\"0\" active=\"true\" default=\"true\" modifiable=\"true\">\n"
                "\t\t<chemistry>Alpha Cell</chemistry>\n"
                "\t\t<!-- Chemistry Specific Properties: -->\n"
                "\t\t<title>One</title>\n\t\t<cells>3</cells>\n\t</profile>\n"));
    ASSERT_NE(reader.getGlobalSettings(), nullptr);
    EXPECT_EQ(reader.getGlobalSettings()->getProperties(),
              (QMap<QString, QString>{{"fan", "4"}, {"name", ""}}));
    ASSERT_EQ(reader.getProfiles().size(), 1);
    EXPECT_EQ(
        profile(0).getProperties(),
        (QMap<QString, QString>{{"chemistry", "Alpha Cell"}, {"title", "One"}, {"cells", "3"}}));
    EXPECT_EQ(profile(0).getID(), 0);
    EXPECT_TRUE(profile(0).getActiveStatus());
    EXPECT_TRUE(profile(0).getDefaultStatus());
    EXPECT_TRUE(profile(0).getModifiableStatus());
}

TEST_F(ReadFromXmlTest, EachFlagHasItsOwnAttribute)
{
    read(inRoot("<profile id=\"1\" active=\"true\" default=\"false\" modifiable=\"false\"/>"
                "<profile id=\"2\" active=\"false\" default=\"true\" modifiable=\"false\"/>"
                "<profile id=\"3\" active=\"false\" default=\"false\" modifiable=\"true\"/>"));
    ASSERT_EQ(reader.getProfiles().size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(profile(i).getActiveStatus(), i == 0) << i;
        EXPECT_EQ(profile(i).getDefaultStatus(), i == 1) << i;
        EXPECT_EQ(profile(i).getModifiableStatus(), i == 2) << i;
    }
}

TEST_F(ReadFromXmlTest, OnlyTheWordTrueSetsAFlag)
{
    read(inRoot("<profile id=\"1\" active=\"True\" default=\"1\" modifiable=\" true\"/>"
                "<profile id=\"2\"/>"));
    ASSERT_EQ(reader.getProfiles().size(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(profile(i).getActiveStatus());
        EXPECT_FALSE(profile(i).getDefaultStatus());
        EXPECT_FALSE(profile(i).getModifiableStatus());
    }
}

TEST_F(ReadFromXmlTest, ProfilesComeInTheOrderOfTheirIds)
{
    read(inRoot(profileText("10", "ten") + profileText("9", "nine") + profileText("-1", "minus")
                + profileText("2", "two")));
    EXPECT_EQ(titles(), QStringList({"minus", "two", "nine", "ten"}));
    EXPECT_EQ(profile(3).getID(), 10);
}

TEST_F(ReadFromXmlTest, EqualIdsKeepFileOrder)
{
    QString content;
    QStringList expected;
    for (int i = 0; i < 40; ++i) {
        content += profileText(i % 2 == 0 ? "7" : "3", QString::number(i));
    }
    for (const int remainder : {1, 0}) {
        for (int i = remainder; i < 40; i += 2) {
            expected.append(QString::number(i));
        }
    }
    read(inRoot(content));
    EXPECT_EQ(titles(), expected);
}

TEST_F(ReadFromXmlTest, IdThatIsNoNumberIsZero)
{
    read(inRoot(profileText("1", "one") + profileText("first", "word") + profileText("-2", "minus")
                + "<profile><title>none</title></profile>"));
    EXPECT_EQ(titles(), QStringList({"minus", "word", "none", "one"}));
}

TEST_F(ReadFromXmlTest, LastOfTwoEqualElementsCounts)
{
    read(inRoot("<profile id=\"0\"><cells>3</cells><cells>4</cells></profile>"));
    EXPECT_EQ(profile(0).getProperties().value("cells"), "4");
}

TEST_F(ReadFromXmlTest, GlobalSettingsMayComeLast)
{
    read(inRoot(profileText("0", "one") + "<GlobalSettings><fan>5</fan></GlobalSettings>"));
    ASSERT_NE(reader.getGlobalSettings(), nullptr);
    EXPECT_EQ(reader.getGlobalSettings()->getProperties().value("fan"), "5");
    EXPECT_EQ(titles(), QStringList("one"));
}

TEST_F(ReadFromXmlTest, GlobalSettingsMayStandBetweenProfiles)
{
    read(inRoot(profileText("0", "one") + "<GlobalSettings><fan>5</fan></GlobalSettings>"
                + profileText("1", "two")));
    ASSERT_NE(reader.getGlobalSettings(), nullptr);
    EXPECT_EQ(titles(), QStringList({"one", "two"}));
}

TEST_F(ReadFromXmlTest, GlobalSettingsMayBeAbsent)
{
    read(inRoot(profileText("0", "one")));
    EXPECT_EQ(reader.getGlobalSettings(), nullptr);
    EXPECT_EQ(titles(), QStringList("one"));
}

TEST_F(ReadFromXmlTest, GlobalSettingsMayBeEmpty)
{
    read(inRoot("<GlobalSettings/>" + profileText("0", "one")));
    ASSERT_NE(reader.getGlobalSettings(), nullptr);
    EXPECT_TRUE(reader.getGlobalSettings()->getProperties().isEmpty());
    EXPECT_EQ(titles(), QStringList("one"));
}

TEST_F(ReadFromXmlTest, NameOfTheRootDoesNotMatter)
{
    read("<Other>" + profileText("0", "one") + "</Other>");
    EXPECT_EQ(titles(), QStringList("one"));
}

TEST_F(ReadFromXmlTest, ElementsAreNamedCaseSensitively)
{
    read(inRoot("<Profile id=\"0\"><title>no</title></Profile>"
                "<globalsettings><fan>5</fan></globalsettings>"));
    EXPECT_TRUE(reader.getProfiles().isEmpty());
    EXPECT_EQ(reader.getGlobalSettings(), nullptr);
}

TEST_F(ReadFromXmlTest, SettingNamedProfileIsNoProfile)
{
    read(inRoot("<profile id=\"0\"><profile>inner</profile><title>outer</title></profile>"));
    EXPECT_EQ(titles(), QStringList("outer"));
    EXPECT_EQ(profile(0).getProperties().value("profile"), "inner");
}

TEST_F(ReadFromXmlTest, EntitiesAndReferencesAreResolved)
{
    read(inRoot(profileText("0", "&lt;&gt;&amp;&quot;&apos;&#65;&#x1F50B;<![CDATA[<&]]>")));
    EXPECT_EQ(titles(), QStringList(QString::fromUtf8("<>&\"'A🔋<&")));
}

TEST_F(ReadFromXmlTest, WhiteSpaceOfValuesIsKept)
{
    read(inRoot(profileText("0", "  a\tb\n c&#13;d ")));
    EXPECT_EQ(titles(), QStringList("  a\tb\n c\rd "));
}

TEST_F(ReadFromXmlTest, CommentsInsideValuesAreSkipped)
{
    read(inRoot(profileText("0", "a<!-- not this -->b")));
    EXPECT_EQ(titles(), QStringList("ab"));
}

TEST_F(ReadFromXmlTest, FileIsUtf8InEveryLocale)
{
    const ForeignLocale locale;
    const QString text = QString::fromUtf8("Größe Ω 電 🔋");
    read(inRoot(profileText("0", text)));
    EXPECT_EQ(titles(), QStringList(text));
}

TEST_F(ReadFromXmlTest, DeclaredEncodingIsFollowed)
{
    QFile file(pathOf("in.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
               + inRoot(profileText("0", QString::fromUtf8("Größe"))).toLatin1());
    file.close();
    ASSERT_TRUE(reader.readProfiles(file.fileName()));
    EXPECT_EQ(titles(), QStringList(QString::fromUtf8("Größe")));
}

TEST_F(ReadFromXmlTest, WindowsLineEndsAreReadAsLineFeeds)
{
    read(inRoot(profileText("0", "a\nb")).replace("\n", "\r\n"));
    EXPECT_EQ(titles(), QStringList("a\nb"));
}

TEST_F(ReadFromXmlTest, LineEndsDoNotMatter)
{
    const QString document = inRoot(
        "<GlobalSettings>\n<name>x\n\ny</name>\n</GlobalSettings>\n"
        "<profile id=\"0\"\n active=\"true\">\n<!--\n-->\n<title>\na\nb\n</title>\n</profile>\n");
    for (const QString& lineEnd : {QString("\n"), QString("\r\n")}) {
        XMLGeneratorParser::ReadFromXML fresh;
        ASSERT_TRUE(
            fresh.readProfiles(writeFile("in.xml", QString(document).replace("\n", lineEnd))));
        EXPECT_EQ(fresh.errorText(), "");
        EXPECT_EQ(fresh.getGlobalSettings()->getProperties().value("name"), "x\n\ny");
        ASSERT_EQ(fresh.getProfiles().size(), 1);
        EXPECT_EQ(fresh.getProfiles().first()->getProperties().value("title"), "\na\nb\n");
        EXPECT_TRUE(fresh.getProfiles().first()->getActiveStatus());
    }
}

TEST_F(ReadFromXmlTest, Utf16WithWindowsLineEndsIsRead)
{
    // As Windows writes "Unicode"; bytes taken out as carriage returns would break it.
    QFile file(pathOf("in.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString text = QString::fromUtf8("a\nB\xE0\xB4\x8D"); // U+0D0D
    const std::unique_ptr<QTextEncoder> encoder(
        QTextCodec::codecForName("UTF-16LE")->makeEncoder(QTextCodec::IgnoreHeader));
    file.write(encoder->fromUnicode(QChar(QChar::ByteOrderMark)
                                    + inRoot(profileText("0", text)).replace("\n", "\r\n")));
    file.close();
    ASSERT_TRUE(reader.readProfiles(file.fileName()));
    EXPECT_EQ(reader.errorText(), "");
    EXPECT_EQ(titles(), QStringList(text));
}

TEST_F(ReadFromXmlTest, AByteOrderMarkCountsOnlyAtTheStart)
{
    const QString mark = QChar(QChar::ByteOrderMark);
    read(mark + inRoot(profileText("0", mark + "a" + mark)));
    EXPECT_EQ(titles(), QStringList(mark + "a" + mark));
}

TEST_F(ReadFromXmlTest, FileThatIsNotThereGivesFalse)
{
    EXPECT_FALSE(reader.readProfiles(pathOf("nowhere.xml")));
    EXPECT_TRUE(reader.getProfiles().isEmpty());
    EXPECT_EQ(reader.getGlobalSettings(), nullptr);
}

TEST_F(ReadFromXmlTest, FolderGivesFalse)
{
    EXPECT_FALSE(reader.readProfiles(folder.path()));
}

TEST_F(ReadFromXmlTest, FileThatIsNoXmlGivesNothingAndSaysSo)
{
    for (const QString& text : {QString(), QString("\n"), QString("just words"),
                                QString("{\"profiles\": []}"), QString(QChar(0)) + "PNG"}) {
        XMLGeneratorParser::ReadFromXML fresh;
        EXPECT_TRUE(fresh.readProfiles(writeFile("in.xml", text)));
        EXPECT_TRUE(fresh.getProfiles().isEmpty()) << text;
        EXPECT_EQ(fresh.getGlobalSettings(), nullptr) << text;
        EXPECT_FALSE(fresh.errorText().isEmpty()) << text;
    }
}

TEST_F(ReadFromXmlTest, ProfilesBeforeTheErrorAreKept)
{
    readBroken(inRoot(profileText("1", "one") + profileText("0", "zero")
                      + "<profile id=\"2\"><title>bro ken</tit"));
    EXPECT_EQ(titles(), QStringList({"zero", "one"}));
    EXPECT_TRUE(contains(reader.errorText(), "line"));
}

TEST_F(ReadFromXmlTest, ProfilesBehindTheErrorAreNotRead)
{
    readBroken(inRoot(profileText("0", "zero") + "<wrong></way>" + profileText("1", "one")));
    EXPECT_EQ(titles(), QStringList("zero"));
    EXPECT_FALSE(reader.errorText().isEmpty());
}

TEST_F(ReadFromXmlTest, ElementNameThatXmlDoesNotAllowIsAnError)
{
    for (const QString tag : {"pack_(max)", "2nd_stage", ".limit", "a\"b"}) {
        XMLGeneratorParser::ReadFromXML fresh;
        EXPECT_TRUE(fresh.readProfiles(
            writeFile("in.xml", inRoot(profileText("0", "zero") + "<profile id=\"1\"><" + tag
                                       + ">1</" + tag + "></profile>"))));
        EXPECT_EQ(fresh.getProfiles().size(), 1) << tag;
        EXPECT_FALSE(fresh.errorText().isEmpty()) << tag;
    }
}

TEST_F(ReadFromXmlTest, BrokenOffGlobalSettingsAreNotUsed)
{
    readBroken("<KelvaronProfiles><GlobalSettings><fan>5</fan><na");
    EXPECT_EQ(reader.getGlobalSettings(), nullptr);
    EXPECT_FALSE(reader.errorText().isEmpty());
}

TEST_F(ReadFromXmlTest, FileBrokenOffAnywhereGivesTheWholeProfilesBeforeIt)
{
    const QString first = profileText("0", QString::fromUtf8("önë 🔋"));
    const QString second = profileText("1", "two");
    const QString start = "<KelvaronProfiles>\n<GlobalSettings><a>1</a></GlobalSettings>\n";
    const QByteArray whole = (start + first + second + "</KelvaronProfiles>").toUtf8();
    const int firstEnd = (start + first).toUtf8().size() - 1;
    const int secondEnd = (start + first + second).toUtf8().size() - 1;
    for (int size = 0; size < whole.size(); ++size) {
        QFile file(pathOf("in.xml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(whole.left(size));
        file.close();
        XMLGeneratorParser::ReadFromXML fresh;
        ASSERT_TRUE(fresh.readProfiles(file.fileName()));
        EXPECT_FALSE(fresh.errorText().isEmpty()) << size;
        const int expected = size >= secondEnd ? 2 : size >= firstEnd ? 1 : 0;
        EXPECT_EQ(fresh.getProfiles().size(), expected) << whole.left(size);
    }
}

TEST_F(ReadFromXmlTest, DamagedFilesNeverCrash)
{
    const QByteArray whole =
        inRoot("<GlobalSettings><a>1</a></GlobalSettings>" + profileText("0", "one")).toUtf8();
    for (int position = 0; position < whole.size(); ++position) {
        for (const char damage : {'<', '&', '\0', '\xFF'}) {
            QByteArray damaged = whole;
            damaged[position] = damage;
            QFile file(pathOf("in.xml"));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(damaged);
            file.close();
            XMLGeneratorParser::ReadFromXML fresh;
            EXPECT_TRUE(fresh.readProfiles(file.fileName()));
            EXPECT_LE(fresh.getProfiles().size(), 1);
        }
    }
}

TEST_F(ReadFromXmlTest, DeepNestingIsReadWithoutHarm)
{
    QString nested;
    for (int i = 0; i < 20000; ++i) {
        nested += "<a>";
    }
    readBroken("<KelvaronProfiles><profile id=\"0\">" + nested);
    EXPECT_TRUE(reader.getProfiles().isEmpty());
}
} // namespace
