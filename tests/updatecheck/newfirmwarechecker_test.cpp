// Asking the server, reading its answer, deciding.

#include "updatecheck/newfirmwarechecker.h"

#include "support/gui/checkertest.h"
#include "support/gui/widgets.h"

// Asking

TEST_F(CheckerTest, AsksTheServerForTheVersionInformation)
{
    server.answer(infoPath, {200, "<info><current_version>1.10</current_version></info>"});
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(told->wait(patience));
    EXPECT_EQ(server.paths(), QStringList({infoPath}));
    EXPECT_EQ(told->at(0).at(0).value<Info>().value("current_version"), "1.10");
    EXPECT_TRUE(failed->isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CheckerTest, FailedRequestIsAnErrorAndTellsNothing)
{
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(failed->wait(patience));
    EXPECT_EQ(failed->size(), 1);
    EXPECT_TRUE(told->isEmpty());
}

TEST_F(CheckerTest, CanAskAgain)
{
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(failed->wait(patience));
    server.answer(infoPath, {200, "<current_version>1.10</current_version>"});
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(told->wait(patience));
    EXPECT_EQ(told->size(), 1);
    EXPECT_EQ(failed->size(), 1);
}

// Reading the version information

TEST_F(CheckerTest, FlatDocumentIsRead)
{
    const Info info = read("<?xml version=\"1.0\"?>\n"
                           "<current_version>1.10</current_version>");
    EXPECT_EQ(info, Info({{"current_version", "1.10"}}));
}

TEST_F(CheckerTest, NestedDocumentIsReadTheSame)
{
    const Info expected = {{"bundle", "\n"}, {"latest", ""}, {"current_version", "1.10"}};
    EXPECT_EQ(read("<bundle>\n<latest><current_version>1.10</current_version></latest></bundle>"),
              expected);
}

TEST_F(CheckerTest, ElementWithChildrenHasTheTextBeforeItsFirstChild)
{
    const Info info = read("<current_version>1.<b>2</b>3</current_version>");
    EXPECT_EQ(info, Info({{"current_version", "1."}, {"b", "2"}}));
}

TEST_F(CheckerTest, RepeatedKeyKeepsItsLastValue)
{
    const Info info = read("<i><current_version>1.10</current_version>"
                           "<current_version>1.11</current_version></i>");
    EXPECT_EQ(info.value("current_version"), "1.11");
}

TEST_F(CheckerTest, OtherElementsAreKept)
{
    const Info info = read("<i><note>a &lt;b&gt; c</note><empty/><current_version>2</"
                           "current_version></i>");
    EXPECT_EQ(info,
              Info({{"i", ""}, {"note", "a <b> c"}, {"empty", ""}, {"current_version", "2"}}));
}

TEST_F(CheckerTest, TextIsUtf8)
{
    EXPECT_EQ(read("<note>für 5 €</note>").value("note"), "für 5 €");
}

TEST_F(CheckerTest, DocumentThatBreaksOffLeavesWhatWasRead)
{
    const Info expected = {{"i", ""}, {"current_version", "1.10"}};
    EXPECT_EQ(read("<i><current_version>1.10</current_version><download_link>http://half"),
              expected);
    EXPECT_EQ(read("<i><current_version>1.10</current_version></oops><download_link>x"), expected);
    EXPECT_TRUE(failed->isEmpty());
}

TEST_F(CheckerTest, HalfAVersionIsNoVersion)
{
    read("<i><current_version>1.10</current_version></i>");
    EXPECT_FALSE(read("<i><current_version>1.1").contains("current_version"));
    EXPECT_FALSE(checker->downloadNeeded());
}

TEST_F(CheckerTest, DocumentsWithoutAVersionTellNone)
{
    for (const char* document :
         {"", " \n", "no XML", "<", "\xFF\xFE\x00", "<html><body><p>Log in, please<br></body>",
          "<!DOCTYPE html><html><head><title>Log in</title></head></html>", "<info/>",
          "{\"current_version\": \"1.10\"}"}) {
        SCOPED_TRACE(document);
        EXPECT_FALSE(read(document).contains("current_version"));
        EXPECT_FALSE(checker->hasUsableVersion());
        EXPECT_FALSE(checker->downloadNeeded());
    }
    EXPECT_TRUE(failed->isEmpty()); // the checker reports what it read; the dialog judges
}

TEST_F(CheckerTest, DocumentIsReadUpToItsLastAllowedElement)
{
    const auto documentOf = [](int elements) { // with the root and the version
        return "<i>" + QByteArray("<e/>").repeated(elements - 2)
               + "<current_version>1.10</current_version></i>";
    };
    EXPECT_EQ(read(documentOf(Checker::mostElements)),
              Info({{"i", ""}, {"e", ""}, {"current_version", "1.10"}}));
    EXPECT_EQ(read(documentOf(Checker::mostElements + 1)), Info({{"i", ""}, {"e", ""}}));
    EXPECT_FALSE(checker->hasUsableVersion());
}

TEST_F(CheckerTest, DocumentIsReadDownToItsDeepestAllowedElement)
{
    const auto documentOf = [](int depth) { // with the version in the innermost element
        return QByteArray("<d>").repeated(depth - 1) + "<current_version>1.10</current_version>"
               + QByteArray("</d>").repeated(depth - 1);
    };
    EXPECT_EQ(read(documentOf(Checker::deepestElement)),
              Info({{"d", ""}, {"current_version", "1.10"}}));
    EXPECT_EQ(read(documentOf(Checker::deepestElement + 1)), Info({{"d", ""}}));
    EXPECT_FALSE(checker->hasUsableVersion());
}

TEST_F(CheckerTest, ManyElementsSideBySideAreNotDeep)
{
    const QByteArray document = "<i>" + QByteArray("<a></a><b/>").repeated(100)
                                + "<current_version>1.10</current_version></i>";
    EXPECT_EQ(read(document).value("current_version"), "1.10");
}

TEST_F(CheckerTest, DocumentMayHaveAsManyBytesAsAllowed)
{
    QByteArray document("<current_version>1.10</current_version>");
    document += QByteArray(Checker::largestDocument - document.size(), ' ');
    server.answer(infoPath, {200, document});
    checker->downloadFirmwareInfo();
    EXPECT_TRUE(waitFor([this] { return told->size() + failed->size() > 0; }));
    EXPECT_EQ(told->size(), 1);
    EXPECT_TRUE(checker->hasUsableVersion());

    server.answer(infoPath, {200, document + ' '});
    checker->downloadFirmwareInfo();
    EXPECT_TRUE(waitFor([this] { return told->size() + failed->size() > 1; }));
    EXPECT_EQ(told->size(), 1);
    EXPECT_EQ(failed->size(), 1);
}

TEST_F(CheckerTest, EntitiesThatMultiplyAreRefused)
{
    QByteArray document("<!DOCTYPE i [<!ENTITY a0 \"aaaaaaaaaa\">");
    for (int i = 1; i < 10; ++i) {
        const QByteArray inner = "&a" + QByteArray::number(i - 1) + ';';
        document += "<!ENTITY a" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    document += "]><i>&a9;</i>";
    read(document);
    EXPECT_FALSE(checker->hasUsableVersion());
}

// Deciding

TEST_F(CheckerTest, DownloadIsNeededForGreaterVersionsOnly)
{
    struct Case
    {
        const char* installed;
        const char* offered;
        bool needed;
    };
    for (const Case& c :
         {Case{"1.9", "1.10", true}, Case{"1.10", "1.9", false}, Case{"1.9", "1.9", false},
          Case{"1.2", "1.2.0", true}, Case{"1.2.0", "1.2", false}, Case{"1.02", "1.2", false},
          Case{"9", "10", true}, Case{"1.9", "99999999999999999999", true}}) {
        SCOPED_TRACE(std::string(c.installed) + " against " + c.offered);
        ApplicationGlobalMap::putString("bundle_version", c.installed);
        tellVersion(c.offered);
        EXPECT_EQ(checker->downloadNeeded(), c.needed);
    }
}

TEST_F(CheckerTest, TextsThatAreNoDottedVersionAreNeverCompared)
{
    for (const char* version :
         {"", "v1.10", "1..10", "1.10.", ".1", " 1.10", "1.10\n", "1.10 beta", "1,10", "-1", "١.٢",
          "../1.10", "1.10/../../1.11", "1.10\\x", "/etc/passwd", "<b>2</b>"}) {
        SCOPED_TRACE(version);
        tellVersion(version);
        EXPECT_FALSE(checker->hasUsableVersion());
        EXPECT_FALSE(checker->downloadNeeded());
    }
}

TEST_F(CheckerTest, VeryLongVersionsAreHarmless)
{
    tellVersion(QString("1.").repeated(500000) + "1");
    checker->downloadNeeded();
    tellVersion(QString("1").repeated(1000000) + "x");
    EXPECT_FALSE(checker->downloadNeeded());
}

TEST_F(CheckerTest, WithoutABundleInUseEveryVersionIsNewer)
{
    ApplicationGlobalMap::putString("bundle_version", {});
    tellVersion("0.1");
    EXPECT_TRUE(checker->downloadNeeded());
}

// Going away

TEST_F(CheckerTest, DeletesItselfAtOnceWithoutARequest)
{
    checker->deleteWhenDone();
    flushDeletions();
    EXPECT_TRUE(checker.isNull());
}

TEST_F(CheckerTest, DeletesItselfWhenItsBundleIsSaved)
{
    server.answer("/b", {200, bundleOfVersion("1.10"), Pace::HELD});
    tellVersion("1.10", server.address() + "/b");
    checker->downloadLatestFirmware();
    ASSERT_TRUE(waitFor([this] { return !server.paths().isEmpty(); }));
    checker->deleteWhenDone();
    flushDeletions();
    ASSERT_FALSE(checker.isNull());
    server.release();
    EXPECT_TRUE(waitFor([this] { return checker.isNull(); }));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), bundleOfVersion("1.10"));
}

TEST_F(CheckerTest, DeletesItselfWhenItsRequestFails)
{
    server.answer(infoPath, {404, "", Pace::HELD});
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(waitFor([this] { return !server.paths().isEmpty(); }));
    checker->deleteWhenDone();
    server.release();
    EXPECT_TRUE(waitFor([this] { return checker.isNull(); }));
}
