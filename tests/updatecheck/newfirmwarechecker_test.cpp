#include "updatecheck/newfirmwarechecker.h"

#include "applicationglobalmap.h"
#include "base/textfile.h"
#include "support/bundletext.h"
#include "support/filesizelimit.h"
#include "support/gui/httpserver.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <memory>

using NewFirmwareChecker::FileDownloader;
using Pace = HttpServer::Pace;
using Checker = NewFirmwareChecker::NewFirmwareChecker;
using Info = QMap<QString, QString>;

namespace
{
const QString infoPath = "/downloads/latest_bundle_info_new.xml";

QByteArray soundBundle(const QByteArray& version)
{
    return Samples::bundle().key("VERSION", version).bytes();
}

/// A checker of a local server, in an empty working folder, with bundle 1.9 in use.
class CheckerTest : public ::testing::Test
{
protected:
    CheckerTest()
    {
        qRegisterMetaType<Info>(); // for the signal spies
        Checker::setServer(server.address());
        checker = new Checker(nullptr);
        downloaded = std::make_unique<QSignalSpy>(checker.data(), &Checker::firmwareDownloaded);
        failed = std::make_unique<QSignalSpy>(checker.data(), &Checker::error);
        told = std::make_unique<QSignalSpy>(checker.data(), &Checker::firmwareInfoDownloaded);
        ApplicationGlobalMap::putString("bundle_version", "1.9");
        EXPECT_TRUE(QDir::setCurrent(folder.path()));
    }

    ~CheckerTest() override
    {
        delete checker;
        QDir::setCurrent(before);
        Checker::setServer({});
        ApplicationGlobalMap::putString("bundle_version", {});
    }

    /// What a document tells.
    Info read(const QByteArray& document)
    {
        checker->on_firmwareInfoDownloaded(document);
        EXPECT_FALSE(told->isEmpty());
        return told->takeLast().at(0).value<Info>();
    }

    void tellVersion(const QString& version, const QString& link = {})
    {
        read("<info><current_version>" + version.toHtmlEscaped().toUtf8()
             + "</current_version><download_link>" + link.toUtf8() + "</download_link></info>");
    }

    static QStringList files() { return QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    static QByteArray contentOf(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    static void makeFile(const QString& name, const QByteArray& content)
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Fetches the bundle and waits for the end.
    void fetchBundle()
    {
        checker->downloadLatestFirmware();
        EXPECT_TRUE(waitFor([this] { return downloaded->size() + failed->size() > 0; }));
    }

    void expectSaved() const
    {
        EXPECT_EQ(downloaded->size(), 1);
        EXPECT_TRUE(failed->isEmpty());
    }

    void expectFailed() const
    {
        EXPECT_EQ(failed->size(), 1);
        EXPECT_TRUE(downloaded->isEmpty());
    }

    QTemporaryDir folder;
    QString before = QDir::currentPath();
    HttpServer server;
    QPointer<Checker> checker;
    std::unique_ptr<QSignalSpy> told;
    std::unique_ptr<QSignalSpy> downloaded;
    std::unique_ptr<QSignalSpy> failed;
};
} // namespace

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
    EXPECT_TRUE(failed->isEmpty()); // the checker tells what it read; the dialog judges
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

// Fetching and saving

TEST_F(CheckerTest, BundleIsSavedUnderItsVersion)
{
    const QByteArray bundle = "ignored \xFF\r\n" + soundBundle("1.10").replace("\n", "\r\n");
    server.answer("/b", {200, bundle});
    tellVersion("1.10", server.address() + "/b");
    fetchBundle();
    expectSaved();
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), bundle);
}

TEST_F(CheckerTest, BundleOfTheSameNameIsReplaced)
{
    makeFile("v1.10.kelvaron", "an older and longer text");
    makeFile("v1.9.kelvaron", "in use");
    server.answer("/b", {200, soundBundle("1.10")});
    tellVersion("1.10", server.address() + "/b");
    fetchBundle();
    expectSaved();
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron", "v1.9.kelvaron"}));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), soundBundle("1.10"));
    EXPECT_EQ(contentOf("v1.9.kelvaron"), "in use");
}

TEST_F(CheckerTest, AnswerOfTheFirstRequestIsNotTakenForABundle)
{
    server.answer(infoPath, {200, "<i><current_version>1.10</current_version><download_link>"
                                      + server.address().toUtf8() + "/b</download_link></i>"});
    server.answer("/b", {200, "<!-- \n" + soundBundle("1.10")});
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(told->wait(patience));
    fetchBundle();
    expectSaved();
    EXPECT_EQ(told->size(), 1); // nor the bundle for version information
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
}

TEST_F(CheckerTest, BundleThatDoesNotComeWholeIsNotSaved)
{
    makeFile("v1.10.kelvaron", "as before");
    server.answer("/dropped", {200, QByteArray(100000, 'x'), Pace::AT_ONCE, 50000});
    for (const QString& link : {server.address() + "/dropped", server.address() + "/missing",
                                QString(), QString("not an address")}) {
        SCOPED_TRACE(link.toStdString());
        failed->clear();
        tellVersion("1.10", link);
        fetchBundle();
        expectFailed();
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    }
}

TEST_F(CheckerTest, AnswerThatIsNotASoundBundleIsNotSaved)
{
    const QByteArray sound = soundBundle("1.10");
    const QByteArray gzip("\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03\x4B\x4C", 12);
    const QByteArray firstSections = sound.left(sound.lastIndexOf(BundleText::marker()));
    const std::map<std::string, HttpServer::Answer> wrong = {
        {"empty", {200, ""}},
        {"a login page", {200, "<!DOCTYPE html><html><body>Log in, please</body></html>"}},
        {"a redirect", {302, "", Pace::AT_ONCE, -1, "Location: /elsewhere"}},
        {"half a gzip stream", {200, gzip, Pace::AT_ONCE, -1, "Content-Encoding: gzip"}},
        {"cut off in its checksums", {200, firstSections}},
        {"cut off in its schema", {200, sound.left(sound.indexOf("struct Cell"))}},
        {"without checksums", {200, sound.left(firstSections.lastIndexOf(BundleText::marker()))}},
        {"with a wrong checksum", {200, Samples::bundle().wrongChecksum(1).bytes()}},
        {"with a malformed key", {200, Samples::bundle().keyLine("no pair").bytes()}},
        {"for a newer editor",
         {200, Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "1.0").bytes()}},
        {"with a schema that cannot be loaded", {200, Samples::bundle("no schema\n").bytes()}},
    };
    makeFile("v1.10.kelvaron", "as before");
    tellVersion("1.10", server.address() + "/b");
    for (const auto& [name, answer] : wrong) {
        SCOPED_TRACE(name);
        failed->clear();
        server.answer("/b", answer);
        fetchBundle();
        expectFailed();
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    }
}

TEST_F(CheckerTest, MissingLinkFails)
{
    read("<current_version>1.10</current_version>");
    fetchBundle();
    expectFailed();
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(server.paths().isEmpty());
}

TEST_F(CheckerTest, FolderInTheBundlesPlaceIsAnError)
{
    ASSERT_TRUE(QDir().mkdir("v1.10.kelvaron"));
    tellVersion("1.10");
    checker->on_firmwareDownloaded(soundBundle("1.10"));
    expectFailed();
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
}

TEST_F(CheckerTest, WorkingFolderThatIsGoneIsAnError)
{
    ASSERT_TRUE(QDir().mkdir("working"));
    ASSERT_TRUE(QDir::setCurrent("working"));
    ASSERT_TRUE(QDir().rmdir(folder.filePath("working")));
    tellVersion("1.10");
    checker->on_firmwareDownloaded(soundBundle("1.10"));
    expectFailed();
}

TEST_F(CheckerTest, FullDiskKeepsTheOldBundle)
{
    makeFile("v1.10.kelvaron", "as before");
    tellVersion("1.10");
    for (const int size : {100, 100000}) { // in the file's buffer, and beyond it
        failed->clear();
        {
            const FileSizeLimit fullDisk(64);
            checker->on_firmwareDownloaded(QByteArray(size, '\n') + soundBundle("1.10"));
        }
        expectFailed();
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    }
}

TEST_F(CheckerTest, BundleFarTooLargeIsNotSaved)
{
    makeFile("v1.10.kelvaron", "as before");
    tellVersion("1.10");
    const QByteArray sound = soundBundle("1.10");
    const QByteArray filler(static_cast<int>(TextFile::largestFile) - sound.size(), '\n');
    checker->on_firmwareDownloaded('\n' + filler + sound);
    expectFailed();
    EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    checker->on_firmwareDownloaded(filler + sound);
    EXPECT_EQ(contentOf("v1.10.kelvaron").size(), TextFile::largestFile);
}

TEST_F(CheckerTest, TextsThatAreNoDottedVersionNeverNameAFile)
{
    ASSERT_TRUE(QDir().mkpath("working/v"));
    ASSERT_TRUE(QDir::setCurrent("working"));
    for (const char* version :
         {"/../../outside", "/inside", "..", "/", "1.10/../../outside", "1 ", "\n", "x"}) {
        SCOPED_TRACE(version);
        failed->clear();
        tellVersion(version);
        checker->on_firmwareDownloaded(soundBundle("1.10"));
        expectFailed();
    }
    EXPECT_EQ(files(), QStringList({"v"}));
    EXPECT_TRUE(QDir("v").isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({"working"}));
}

TEST_F(CheckerTest, VersionTooLongForAFileNameIsAnError)
{
    tellVersion(QString("1.").repeated(200) + "1");
    checker->on_firmwareDownloaded(soundBundle("1.10"));
    expectFailed();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CheckerTest, MissingVersionNamesTheFileJustV)
{
    read("<info/>");
    checker->on_firmwareDownloaded(soundBundle("1.10"));
    expectSaved();
    EXPECT_EQ(files(), QStringList({"v.kelvaron"}));
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
    server.answer("/b", {200, soundBundle("1.10"), Pace::HELD});
    tellVersion("1.10", server.address() + "/b");
    checker->downloadLatestFirmware();
    ASSERT_TRUE(waitFor([this] { return !server.paths().isEmpty(); }));
    checker->deleteWhenDone();
    flushDeletions();
    ASSERT_FALSE(checker.isNull());
    server.release();
    EXPECT_TRUE(waitFor([this] { return checker.isNull(); }));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), soundBundle("1.10"));
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
