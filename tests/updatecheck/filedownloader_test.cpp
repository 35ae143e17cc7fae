#include "updatecheck/filedownloader.h"

#include "support/gui/httpserver.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

using NewFirmwareChecker::FileDownloader;

namespace
{
class FileDownloaderTest : public ::testing::Test
{
protected:
    void start(const QString& path) { downloader->startDownloading(server.address() + path); }

    bool waitForEnd() const
    {
        return waitFor([this] { return finished.size() + failed.size() > 0; });
    }

    void expectAnswer(const QByteArray& answer) const
    {
        ASSERT_TRUE(waitForEnd());
        ASSERT_EQ(finished.size(), 1);
        EXPECT_TRUE(finished.at(0).at(0).toByteArray() == answer);
        EXPECT_TRUE(failed.isEmpty());
    }

    /// One error, at the end, and nothing after it.
    void expectError() const
    {
        ASSERT_TRUE(waitForEnd());
        flushDeletions();
        EXPECT_EQ(failed.size(), 1);
        EXPECT_TRUE(finished.isEmpty());
        EXPECT_FALSE(downloader->isBusy());
    }

    HttpServer server;
    std::unique_ptr<FileDownloader> downloader = std::make_unique<FileDownloader>(nullptr);
    QSignalSpy finished{downloader.get(), &FileDownloader::finished};
    QSignalSpy failed{downloader.get(), &FileDownloader::error};
    QSignalSpy progress{downloader.get(), &FileDownloader::downloadProgress};
};
} // namespace

TEST_F(FileDownloaderTest, FetchesWithAGetThatNamesTheProgram)
{
    const QByteArray body("bundle\r\n\0\xFF bytes", 16);
    server.answer("/file", {200, body});
    start("/file");
    EXPECT_TRUE(downloader->isBusy());
    expectAnswer(body);
    EXPECT_FALSE(downloader->isBusy());
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_EQ(server.requests().at(0).method, "GET");
    EXPECT_EQ(server.requests().at(0).headers.value("user-agent"),
              "Tovo-Tech-Kelvaron-Profile-Editor");
}

TEST_F(FileDownloaderTest, AsksForAnAnswerWithoutCompressionAndUnpacksNone)
{
    const QByteArray packed("\x1F\x8B\x08\0\0\0\0\0\0\x03\x4B\x04\0\x43\xBE\xB7\xE8\x01\0\0\0", 21);
    server.answer("/file", {200, packed, Pace::AT_ONCE, -1, "Content-Encoding: gzip"});
    start("/file");
    expectAnswer(packed);
    EXPECT_EQ(server.requests().at(0).headers.value("accept-encoding"), "identity");
}

TEST_F(FileDownloaderTest, EmptyAnswerIsAnAnswer)
{
    server.answer("/file", {200, ""});
    start("/file");
    expectAnswer("");
}

TEST_F(FileDownloaderTest, AnswerWithoutALengthEndsWithItsConnection)
{
    server.answer("/file", {200, "all of it", Pace::AT_ONCE, -1, {}, false});
    start("/file");
    expectAnswer("all of it");
}

TEST_F(FileDownloaderTest, AnswersAboveWhatIsReservedArriveWhole)
{
    const QByteArray body(3 * 262144 + 1, 'x');
    server.answer("/file", {200, body});
    start("/file");
    expectAnswer(body);
}

TEST_F(FileDownloaderTest, TellsTheBytesReceivedSoFar)
{
    server.answer("/file", {200, QByteArray(300000, 'x')});
    start("/file");
    ASSERT_TRUE(waitForEnd());
    ASSERT_FALSE(progress.isEmpty());
    qint64 before = 0;
    for (const QList<QVariant>& arguments : progress) {
        EXPECT_GE(arguments.at(0).toLongLong(), before);
        before = arguments.at(0).toLongLong();
    }
    EXPECT_EQ(before, 300000);
}

TEST_F(FileDownloaderTest, HttpErrorsAreReportedOnce)
{
    for (const int status : {404, 403, 500, 503}) {
        server.answer("/file", {status, "a page that tells so"});
        failed.clear();
        start("/file");
        expectError();
    }
}

TEST_F(FileDownloaderTest, OtherStatusCodesAreAnswers)
{
    server.answer("/file", {203, "told by another"});
    start("/file");
    expectAnswer("told by another");
}

TEST_F(FileDownloaderTest, RedirectsAreNotFollowed)
{
    server.answer("/file", {302, "", Pace::AT_ONCE, -1, "Location: /elsewhere"});
    server.answer("/elsewhere", {200, "not asked for"});
    start("/file");
    expectAnswer("");
    EXPECT_EQ(server.paths(), QStringList({"/file"}));
}

TEST_F(FileDownloaderTest, RefusedConnectionIsReportedOnce)
{
    const QString address = server.address();
    server.stop();
    downloader->startDownloading(address + "/file");
    expectError();
}

TEST_F(FileDownloaderTest, AnswerThatBreaksOffIsReportedOnce)
{
    server.answer("/file", {200, QByteArray(100000, 'x'), Pace::AT_ONCE, 50000});
    start("/file");
    expectError();
}

TEST_F(FileDownloaderTest, AddressesThatAreNotHttpFail)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("of this machine");
    file.close();
    for (const QString& address :
         {QString(), QString("file"), QString("/downloads/file"), QString("http://"),
          QString("http:///file"), QString("data:,text"), QString("no address at all"),
          "file://" + file.fileName(), QString("qrc:/new/images/upload.png")}) {
        SCOPED_TRACE(address);
        failed.clear();
        downloader->startDownloading(address);
        EXPECT_TRUE(failed.isEmpty()); // reported from the event loop, like every other error
        expectError();
    }
}

TEST_F(FileDownloaderTest, NewRequestTakesTheOldOnesPlace)
{
    server.answer("/old", {200, "old", Pace::HELD});
    server.answer("/new", {200, "new"});
    start("/old");
    ASSERT_TRUE(waitFor([this] { return server.paths().contains("/old"); }));
    start("/new");
    expectAnswer("new");
    server.release();
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
    EXPECT_EQ(finished.size(), 1);
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(FileDownloaderTest, ReceivedBytesOfAnAbortedRequestAreForgotten)
{
    server.answer("/old", {200, "", Pace::ENDLESS});
    server.answer("/new", {200, "new"});
    start("/old");
    ASSERT_TRUE(progress.wait(patience));
    start("/new");
    expectAnswer("new");
}

TEST_F(FileDownloaderTest, ErrorOfTheLastRequestIsForgotten)
{
    start("/missing");
    expectError();
    failed.clear();
    server.answer("/file", {200, "there"});
    start("/file");
    expectAnswer("there");
}

TEST_F(FileDownloaderTest, ReceiverMayStartTheNextRequest)
{
    server.answer("/first", {200, "first"});
    server.answer("/second", {200, "second"});
    QList<QByteArray> answers;
    QObject::connect(downloader.get(), &FileDownloader::finished, downloader.get(),
                     [&](const QByteArray& answer) {
                         if (answers.isEmpty()) {
                             start("/second");
                         }
                         answers.append(answer);
                     });
    start("/first");
    EXPECT_TRUE(waitFor([&] { return answers.size() == 2; }));
    EXPECT_EQ(answers, QList<QByteArray>({"first", "second"}));
}

TEST_F(FileDownloaderTest, ResetEndsARequestWithoutASignal)
{
    server.answer("/file", {200, "", Pace::ENDLESS});
    start("/file");
    ASSERT_TRUE(progress.wait(patience));
    downloader->reset();
    EXPECT_FALSE(downloader->isBusy());
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
    EXPECT_TRUE(finished.isEmpty());
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(FileDownloaderTest, ResetWithoutARequestDoesNothing)
{
    downloader->reset();
    EXPECT_FALSE(downloader->isBusy());
    server.answer("/file", {200, "there"});
    start("/file");
    expectAnswer("there");
}

TEST_F(FileDownloaderTest, GoesAwayWithItsRequest)
{
    server.answer("/file", {200, "", Pace::ENDLESS});
    start("/file");
    ASSERT_TRUE(progress.wait(patience));
    downloader.reset();
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
    EXPECT_TRUE(finished.isEmpty());
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(FileDownloaderTest, AnswerOfTheLargestSizeArrives)
{
    server.answer("/file", {200, QByteArray(FileDownloader::largestAnswer, 'x')});
    start("/file");
    ASSERT_TRUE(waitForEnd());
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished.at(0).at(0).toByteArray().size(), FileDownloader::largestAnswer);
}

TEST_F(FileDownloaderTest, LargerAnswerIsAnError)
{
    server.answer("/file", {200, QByteArray(FileDownloader::largestAnswer + 1, 'x')});
    start("/file");
    expectError();
}

TEST_F(FileDownloaderTest, SmallerLimitCountsForItsRequestAlone)
{
    server.answer("/file", {200, QByteArray(1001, 'x')});
    downloader->startDownloading(server.address() + "/file", 1000);
    expectError();
    failed.clear();
    start("/file");
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(FileDownloaderTest, ServerThatNeverStopsSendingIsAnError)
{
    server.answer("/file", {200, "", Pace::ENDLESS_FLOOD});
    start("/file");
    expectError();
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
}
