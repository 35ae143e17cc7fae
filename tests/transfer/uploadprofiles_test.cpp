#include "transfer/uploadprofiles.h"

#include "serialports/portturns.h"
#include "support/fakeuploader.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QFileInfo>
#include <QSignalSpy>

#include <csignal>
#include <memory>

using UploadDownload::UploadProfiles;

class UploadProfilesTest : public ::testing::Test
{
protected:
    /// Starts a write and waits until it has reported its end; further signals of the same run
    /// follow without a pause.
    void runToItsEnd()
    {
        worker->start();
        ASSERT_TRUE(waitFor([this] { return !finished.isEmpty() || !errors.isEmpty(); }));
        ASSERT_TRUE(waitFor([this] {
            const QList<QProcess*> processes = owner.findChildren<QProcess*>();
            return std::all_of(processes.begin(), processes.end(), [](const QProcess* process) {
                return process->state() == QProcess::NotRunning;
            });
        }));
        QCoreApplication::processEvents();
    }

    /// The operation letters of the runs so far.
    static QStringList steps()
    {
        QStringList letters;
        for (const QStringList& arguments : FakeUploader::runs()) {
            letters.append(arguments.value(4));
        }
        return letters;
    }

    FakeUploader uploader;
    QObject owner;
    UploadProfiles* worker = new UploadProfiles("/dev/ttyUSB0", "profilesToUpload.hex", &owner);
    QSignalSpy finished{worker, &UploadProfiles::finished};
    QSignalSpy errors{worker, &UploadProfiles::errorUploading};
};

TEST_F(UploadProfilesTest, ErasesThenPrograms)
{
    runToItsEnd();
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(errors.size(), 0);
    EXPECT_EQ(
        FakeUploader::runs(),
        QList<QStringList>({{"-s", "/dev/ttyUSB0", "-h", "-V", "-E", "0x9C00", "0xA000"},
                            {"-s", "/dev/ttyUSB0", "-h", "-V", "-w", "profilesToUpload.hex"}}));
}

TEST_F(UploadProfilesTest, PassesPortAndPathAsSingleArguments)
{
    worker = new UploadProfiles("", "a folder/it's \"here\" $HOME.hex", &owner);
    QSignalSpy ends(worker, &UploadProfiles::finished);
    worker->start();
    ASSERT_TRUE(ends.wait(patience));
    ASSERT_EQ(FakeUploader::runs().size(), 2);
    EXPECT_EQ(FakeUploader::runs().at(1),
              QStringList({"-s", "", "-h", "-V", "-w", "a folder/it's \"here\" $HOME.hex"}));
}

TEST_F(UploadProfilesTest, DoesNotProgramBeforeTheEraseHasEnded)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    worker->start();
    ASSERT_TRUE(waitFor([] { return steps().size() == 1; }));
    EXPECT_EQ(owner.findChildren<QProcess*>().size(), 1);
    writeFile("go", "");
    ASSERT_TRUE(finished.wait(patience));
    EXPECT_EQ(steps(), QStringList({"-E", "-w"}));
}

TEST_F(UploadProfilesTest, NeverProgramsAfterAFailedErase)
{
    for (const char* exitCode : {"1", "2", "255"}) {
        errors.clear();
        QFile::remove("runs.txt");
        uploader.setBehaviour(QByteArray("exit ") + exitCode);
        runToItsEnd();
        EXPECT_EQ(errors.size(), 1) << exitCode;
        EXPECT_EQ(finished.size(), 0) << exitCode;
        EXPECT_EQ(steps(), QStringList("-E")) << exitCode;
    }
}

TEST_F(UploadProfilesTest, FailsWhenProgrammingFails)
{
    uploader.setBehaviour("[ \"$5\" != -w ]");
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
    EXPECT_EQ(steps(), QStringList({"-E", "-w"}));
}

TEST_F(UploadProfilesTest, CrashInTheEraseIsToldTwiceAndNothingIsProgrammed)
{
    uploader.setBehaviour(FakeUploader::crash());
    runToItsEnd();
    EXPECT_EQ(errors.size(), 2);
    EXPECT_EQ(finished.size(), 0);
    EXPECT_EQ(steps(), QStringList("-E"));
}

TEST_F(UploadProfilesTest, CrashInProgrammingIsToldTwice)
{
    uploader.setBehaviour("[ \"$5\" = -w ] || exit 0; " + FakeUploader::crash());
    runToItsEnd();
    EXPECT_EQ(errors.size(), 2);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(UploadProfilesTest, MissingUploaderIsToldOnce)
{
    FakeUploader::remove();
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(UploadProfilesTest, UploaderThatIsNotExecutableIsToldOnce)
{
    FakeUploader::makeNotExecutable();
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(UploadProfilesTest, UploaderThatGoesBetweenTheStepsIsToldOnce)
{
    uploader.setBehaviour("rm -f \"$0\"");
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(UploadProfilesTest, OutputIsLeftAloneHoweverMuchItIs)
{
    uploader.setBehaviour("head -c 3000000 /dev/zero; head -c 300000 /dev/zero >&2");
    runToItsEnd();
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(UploadProfilesTest, ProcessesBelongToTheWorkersOwnerAndStay)
{
    runToItsEnd();
    EXPECT_EQ(worker->parent(), &owner);
    EXPECT_EQ(owner.findChildren<QProcess*>(QString(), Qt::FindDirectChildrenOnly).size(), 2);
}

TEST_F(UploadProfilesTest, OwnerThatGoesEndsTheRun)
{
    uploader.setBehaviour("echo $$ > pid; " + FakeUploader::waitForGo());
    auto window = std::make_unique<QObject>();
    auto* run = new UploadProfiles("COM7", "x.hex", window.get());
    QSignalSpy heard(run, &UploadProfiles::errorUploading);
    run->start();
    ASSERT_TRUE(waitFor([] { return contentOf("pid").endsWith('\n'); }));
    window.reset();
    EXPECT_EQ(heard.size(), 0);
    EXPECT_NE(::kill(contentOf("pid").trimmed().toInt(), 0), 0) << "still running";
}

// The image

TEST_F(UploadProfilesTest, FileThatAnotherEditorHasWrittenMeanwhileIsPutRight)
{
    uploader.setBehaviour(
        "cat profilesToUpload.hex >> seen.txt; echo theirs > profilesToUpload.hex");
    writeFile("profilesToUpload.hex", "theirs\n");
    worker->setImage("ours\n");
    runToItsEnd();
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(contentOf("seen.txt"), "ours\nours\n") << "before the erase and after it";
}

TEST_F(UploadProfilesTest, FileThatIsRightIsNotWrittenAgain)
{
    writeFile("profilesToUpload.hex", "ours\n");
    ASSERT_TRUE(
        QFile::link("profilesToUpload.hex", "same")); // a rewritten file would not be a link
    ASSERT_TRUE(QFile::rename("profilesToUpload.hex", "other"));
    ASSERT_TRUE(QFile::link("other", "profilesToUpload.hex"));
    worker->setImage("ours\n");
    runToItsEnd();
    EXPECT_EQ(finished.size(), 1);
    EXPECT_TRUE(QFileInfo("profilesToUpload.hex").isSymLink());
}

TEST_F(UploadProfilesTest, NothingIsErasedWhenTheFileCannotBePutRight)
{
    ASSERT_TRUE(QDir().mkpath("profilesToUpload.hex/folder"));
    worker->setImage("ours\n");
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(steps(), QStringList());
}

// The port

TEST_F(UploadProfilesTest, WriteWaitsForTheWholeOfAnEarlierOne)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    auto* later = new UploadProfiles("/dev/ttyUSB0", "later.hex", &owner);
    QSignalSpy laterFinished(later, &UploadProfiles::finished);
    worker->start();
    later->start();
    ASSERT_TRUE(waitFor([] { return FakeUploader::runs().size() == 1; }));
    writeFile("go", "");
    ASSERT_TRUE(waitFor([&] { return !laterFinished.isEmpty(); }));
    EXPECT_EQ(steps(), QStringList({"-E", "-w", "-E", "-w"}));
    EXPECT_EQ(FakeUploader::runs().at(1).last(), "profilesToUpload.hex");
    EXPECT_EQ(FakeUploader::runs().at(3).last(), "later.hex");
}

TEST_F(UploadProfilesTest, FailedWriteLeavesThePortToTheNextOne)
{
    auto* later = new UploadProfiles("/dev/ttyUSB0", "later.hex", &owner);
    QSignalSpy laterEnd(later, &UploadProfiles::errorUploading);
    for (const QByteArray& behaviour : {QByteArray("exit 1"), FakeUploader::crash()}) {
        uploader.setBehaviour(behaviour);
        laterEnd.clear();
        worker->start();
        later->start();
        EXPECT_TRUE(waitFor([&] { return !laterEnd.isEmpty(); }));
        EXPECT_TRUE(waitFor([] { return PortTurns::ofApplication().descriptions().isEmpty(); }));
    }
    FakeUploader::remove();
    laterEnd.clear();
    worker->start();
    later->start();
    EXPECT_TRUE(waitFor([&] { return !laterEnd.isEmpty(); }));
    EXPECT_EQ(PortTurns::ofApplication().descriptions(), QStringList());
}

TEST_F(UploadProfilesTest, WriteThatGoesAwayWhileItWaitsNeverStarts)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    auto* later = new UploadProfiles("/dev/ttyUSB0", "later.hex", &owner);
    worker->start();
    later->start();
    delete later;
    writeFile("go", "");
    ASSERT_TRUE(waitFor([this] { return !finished.isEmpty(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(steps(), QStringList({"-E", "-w"}));
}
