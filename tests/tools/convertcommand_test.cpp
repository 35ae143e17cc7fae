#include "support/profilesprogram.h"

namespace
{
class ConvertCommandTest : public ProfilesProgramTest
{
protected:
    ProgramRun convert(const QString& input, const QString& output) const
    {
        return runWithHeader({"convert", input, output});
    }

    ProgramRun convertXml(const QByteArray& document, const QString& output = "out.hex") const
    {
        writeFile("in.xml", document);
        return convert("in.xml", output);
    }

    /// Expects a successful conversion with a message.
    void expectTold(const ProgramRun& result, const QByteArray& line) const
    {
        expectRefused(result, 1, line);
        EXPECT_TRUE(exists("out.hex"));
    }

    static QByteArray oneProfile()
    {
        return profile(0, "one").replace("default=\"true\"", "default=\"false\"");
    }
};
} // namespace

TEST_F(ConvertCommandTest, TurnsXmlIntoHex)
{
    const ProgramRun result = convertXml(xml(oneProfile()));
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(contentOf("out.hex"), oneProfileHex());
}

TEST_F(ConvertCommandTest, TurnsHexIntoXml)
{
    writeFile("in.hex", oneProfileHex());
    const ProgramRun result = convert("in.hex", "out.xml");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(contentOf("out.xml"), xml(oneProfile()));
}

TEST_F(ConvertCommandTest, ManyProfilesComeBackAsTheyWere)
{
    const QByteArray document =
        xml(profile(0, "one", "0", "9") + profile(1, "&lt;&amp;", "9", "9", "false")
            + profile(2, "", "5", "7", "false"));
    EXPECT_EQ(convertXml(document).exitCode, 0);
    EXPECT_EQ(convert("out.hex", "out.xml").exitCode, 0);
    EXPECT_EQ(contentOf("out.xml"), document);
}

TEST_F(ConvertCommandTest, TakesTheHeaderOutOfABundle)
{
    pack();
    writeFile("in.xml", xml(oneProfile()));
    const ProgramRun result =
        runProfiles({"convert", "--bundle", "out.kelvaron", "in.xml", "out.hex"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(contentOf("out.hex"), oneProfileHex());
}

TEST_F(ConvertCommandTest, TellsABundleWhoseChecksumsDoNotMatch)
{
    pack();
    writeFile("out.kelvaron", contentOf("out.kelvaron").replace("name = test", "name = tess"));
    writeFile("in.xml", xml(oneProfile()));
    const ProgramRun result =
        runProfiles({"convert", "--bundle", "out.kelvaron", "in.xml", "out.hex"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "out.kelvaron: warning: its checksums do not match\n");
    writeFile("none.kelvaron", "...\nVERSION = 1\n...\n");
    expectRefused(runProfiles({"convert", "--bundle", "none.kelvaron", "in.xml", "out2.hex"}), 1,
                  "none.kelvaron: error: 0 complete sections");
}

TEST_F(ConvertCommandTest, WritesTheFormatThatIsSaid)
{
    writeFile("in.xml", xml(oneProfile()));
    EXPECT_EQ(runWithHeader({"convert", "--to", "hex", "in.xml", "image"}).exitCode, 0);
    EXPECT_EQ(contentOf("image"), oneProfileHex());
    EXPECT_EQ(runWithHeader({"convert", "--to", "xml", "image", "again.hex"}).exitCode, 0);
    EXPECT_EQ(contentOf("again.hex"), xml(oneProfile()));
    expectRefused(runWithHeader({"convert", "in.xml", "image2"}), 2, "neither *.xml nor *.hex");
    expectRefused(runWithHeader({"convert", "--to", "pdf", "in.xml", "x"}), 2, "xml or hex");
    EXPECT_FALSE(exists("image2"));
}

TEST_F(ConvertCommandTest, TellsTextsThatAreCut)
{
    expectTold(
        convertXml(xml(profile(0, "one and more"))),
        "out.hex: warning: profile 1, \"one and more\" (Cell): Title: one and more -> one and\n");
    expectTold(
        convertXml(xml(profile(0, "one and more"))),
        "in.xml: warning: profile 1, \"one and more\" (Cell): Title: \"one and more\" is longer "
        "than 7 characters\n");
}

TEST_F(ConvertCommandTest, TellsNumbersThatAnImageRounds)
{
    expectTold(convertXml(xml(profile(0, "one", "3.4"))),
               "out.hex: warning: profile 1, \"one\" (Cell): Low: 3.4 V -> 3 V\n");
    expectTold(convertXml(xml(profile(0, "one", "300", "4"))),
               "out.hex: warning: profile 1, \"one\" (Cell): Low: 300 V -> 44 V\n");
}

TEST_F(ConvertCommandTest, TellsWhatTheFileDoesNotMatchTheSchemaIn)
{
    expectTold(convertXml(xml(profile(0, "one").replace("<low>3</low>", "<lo>3</lo>"))),
               "in.xml: warning: profile 1, \"one\" (Cell): Low is missing and is now 0\n");
    EXPECT_TRUE(convertXml(xml(profile(0, "one").replace("<low>3</low>", "<lo>3</lo>")))
                    .errors.contains("\"lo\" is unknown and was left out\n"));
    expectTold(convertXml(xml(profile(0, "one", "12"))), "Low: 12 is not between 0 and 9\n");
}

TEST_F(ConvertCommandTest, TellsASecondDefaultProfile)
{
    expectTold(
        convertXml(xml(profile(0, "one") + profile(1, "two"))),
        "profile 2, \"two\" (Cell): an earlier profile is already the default, so this one is "
        "not\n");
    convertXml(xml(profile(0, "one") + profile(1, "two")), "out.xml");
    EXPECT_TRUE(contains(contentOf("out.xml"), "id=\"0\" active=\"true\" default=\"true\""));
    EXPECT_TRUE(contains(contentOf("out.xml"), "id=\"1\" active=\"true\" default=\"false\""));
}

TEST_F(ConvertCommandTest, LeavesOutUnknownChemistriesAndTellsThem)
{
    const QByteArray unknown = profile(1, "old").replace("Cell", "Zinc");
    expectTold(convertXml(xml(oneProfile() + unknown)),
               "in.xml: error: the profile \"old\" is left out: there is no chemistry \"Zinc\"\n");
    EXPECT_EQ(contentOf("out.hex"), oneProfileHex());
}

TEST_F(ConvertCommandTest, WritesNothingWhenNoProfileIsLeft)
{
    const QByteArray unknown = profile(1, "old").replace("Cell", "Zinc");
    expectRefused(convertXml(xml(unknown)), 1, "left out");
    expectRefused(convertXml("<html/>"), 1, "in.xml: error: this is not a file of profiles\n");
    expectRefused(convertXml("<KelvaronProfiles>"), 1, "the file is damaged");
    EXPECT_FALSE(exists("out.hex"));
}

TEST_F(ConvertCommandTest, KeepsWhatIsWholeOfABrokenFile)
{
    QByteArray document = xml(oneProfile() + profile(1, "two"));
    document.truncate(document.lastIndexOf("<high>"));
    expectTold(convertXml(document), "the file is damaged after 1 complete profile: ");
    EXPECT_EQ(contentOf("out.hex"), oneProfileHex());
}

TEST_F(ConvertCommandTest, RefusesTextsThatTheChargerCannotHold)
{
    expectRefused(convertXml(xml(profile(0, "Z\xC3\xA4hler"))), 1,
                  "in.xml: error: the charger cannot hold the Title of the profile "
                  "\"Z\xC3\xA4hler\": \"\xC3\xA4\"\n");
    EXPECT_FALSE(exists("out.hex"));
}

TEST_F(ConvertCommandTest, RefusesMoreProfilesThanAnImageHolds)
{
    QByteArray profiles;
    for (int i = 0; i < 72; ++i) { // 2048 / 28 - 1
        profiles += profile(i, "one", "3", "4", "false");
    }
    EXPECT_EQ(convertXml(xml(profiles)).exitCode, 0);
    profiles += profile(72, "one", "3", "4", "false");
    QFile::remove(pathOf("out.hex"));
    expectRefused(convertXml(xml(profiles)), 1,
                  "in.xml: error: 73 profiles, but a HEX file takes 72\n");
    EXPECT_FALSE(exists("out.hex"));
}

TEST_F(ConvertCommandTest, TellsOfHexFilesThatCannotBeReadAgain)
{
    // Without a profile, the file contains no erased byte, and the reader finds no end.
    expectTold(convertXml(xml({})),
               "out.hex: error: a profile has a type that is not in the settings header\n");
}

TEST_F(ConvertCommandTest, TellsGlobalSettingsThatAHexFileDoesNotHold)
{
    QByteArray schema = smallSchema();
    schema.replace("\"\", A, 1, -1, basic\n}\nstruct Cell",
                   "\"\", A, 1, -1, basic\nunsigned char tone; // bool, 8, \"Tone\", A, 1, 0, "
                   "basic\n}\nstruct Cell");
    writeFile("schema.in", schema);
    QByteArray document = xml(oneProfile());
    document.replace("<GlobalSettings>\n", "<GlobalSettings>\n\t\t<tone>true</tone>\n");
    EXPECT_EQ(convertXml(document).exitCode, 0);
    document.replace("<tone>true", "<tone>false");
    expectTold(convertXml(document),
               "out.hex: warning: a HEX file holds no global settings: Tone: false -> true\n");
    EXPECT_EQ(convertXml(document, "out.xml").exitCode, 0);
    EXPECT_EQ(contentOf("out.xml"), document);
}

TEST_F(ConvertCommandTest, TellsValuesOfSettingsThatAreNotShown)
{
    writeFile("in.hex", oneProfileHex());
    QByteArray schema = smallSchema();
    schema.replace("\"High\", \"V\", A, low + 1, 3", "\"High\", \"V\", A, 7, -1");
    writeFile("schema.in", schema);
    const ProgramRun result = convert("in.hex", "out.xml");
    expectRefused(result, 1, "High is a hidden setting; its value \"4\" is lost\n");
}

TEST_F(ConvertCommandTest, RefusesDamagedHexFiles)
{
    QByteArray schema = smallSchema();
    schema.replace("3, basic\n}\n", "3, basic\nunsigned char sum; // num, auto, 0, 255, x1, 0, "
                                    "\"checksum\", \"\", A, 0, -1, basic\n}\n");
    writeFile("schema.in", schema);
    ASSERT_EQ(convertXml(xml(oneProfile())).exitCode, 0);
    // A bit of the title flips, the line's own checksum with it.
    const QByteArray sound = contentOf("out.hex");
    QByteArray damaged = sound;
    ASSERT_TRUE(damaged.contains(":100800006E6F02"));
    damaged.replace(":100800006E6F02", ":100800006E6D02");
    writeFile("in.hex", damaged);
    const ProgramRun result = convert("in.hex", "out.xml");
    expectRefused(result, 1,
                  "in.hex: error: a profile is damaged: its checksum does not match\n"
                  "in.hex: note: ERROR!!! Checksums dont match! Expected : ");
    EXPECT_FALSE(exists("out.xml"));

    writeFile("in.hex", "nothing of the kind");
    expectRefused(convert("in.hex", "out.xml"), 1, "in.hex: error: this is not a HEX file");
    writeFile("in.hex", QByteArray(sound).replace(":100800006E6F02", ":100800006E6F04"));
    expectRefused(convert("in.hex", "out.xml"), 1, "in.hex: error: a profile has a type");
}

TEST_F(ConvertCommandTest, TellsFilesThatCannotBeReadOrWritten)
{
    expectRefused(convert("absent.xml", "out.hex"), 3, "absent.xml: error: cannot be read");
    writeFile("in.xml", xml(oneProfile()));
    expectRefused(convert("in.xml", "no/where.hex"), 3, "no/where.hex: cannot be written");
    expectRefused(runProfiles({"convert", "in.xml", "out.hex", "--header", "absent.h"}), 3,
                  "absent.h: cannot be read");
    expectRefused(runProfiles({"convert", "in.xml", "out.hex", "--bundle", "."}), 3,
                  ".: is a directory");
}

TEST_F(ConvertCommandTest, AFailureLeavesTheOlderFileAlone)
{
    writeFile("out.hex", "precious");
    expectRefused(convertXml(xml(profile(0, "Z\xC3\xA4hler"))), 1, "cannot hold");
    EXPECT_EQ(contentOf("out.hex"), "precious");
}

TEST_F(ConvertCommandTest, RefusesAHeaderThatTheEditorWouldEndFor)
{
    writeFile("in.xml", xml(oneProfile()));
    writeFile("schema.in", smallSchema().replace("low + 1", "lw + 1"));
    const ProgramRun result = convert("in.xml", "out.hex");
    expectRefused(result, 1, "schema.in:13:66: error: no setting is called \"lw\"\n");
    EXPECT_TRUE(contains(result.errors, "schema.in: cannot be used\n"));
    EXPECT_FALSE(exists("out.hex"));
}

TEST_F(ConvertCommandTest, GoesOnWithAHeaderThatTheEditorStartsWith)
{
    writeFile("schema.in", smallSchema()
                               .replace("\"V\", A, 3, 2, basic", "\"V\", A, 3, 99, basic")
                               .replace("low, 9", "0, 9")
                               .replace("low + 1", "4"));
    writeFile("in.hex", oneProfileHex());
    const ProgramRun result = convert("in.hex", "out.xml");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(runProfiles({"check", "schema.in"}).exitCode, 1);
}
