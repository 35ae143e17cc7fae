// The files left after a signal, each time in a child process.

#include "rescue/crashrescue.h"

#include "support/files.h"
#include "support/standardoutputcapture.h"

#include <csignal>
#include <memory>

#include <sys/resource.h>
#include <sys/wait.h>

namespace
{
const char folderVariable[] = "CRASH_RESCUE_TEST_FOLDER";

class CrashRescueDeathTest : public ::testing::Test
{
protected:
    CrashRescueDeathTest()
    {
        // The child starts the test from its beginning and has to find its parent's folder.
        if (!qEnvironmentVariableIsSet(folderVariable)) {
            ownFolder = std::make_unique<QTemporaryDir>();
            EXPECT_TRUE(ownFolder->isValid());
            qputenv(folderVariable, QFile::encodeName(ownFolder->path()));
        }
        folder = QDir(QFile::decodeName(qgetenv(folderVariable)));
    }

    ~CrashRescueDeathTest() override
    {
        if (ownFolder != nullptr) {
            qunsetenv(folderVariable);
        }
    }

    QString path() const { return folder.filePath("copy.xml"); }

    /// Signals may be ignored by the parent process of the tests.
    static void install()
    {
        sendStandardOutputToStandardError();
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            std::signal(number, SIG_DFL);
        }
        CrashRescue::install();
    }

    void keepAndRaise(int number) const
    {
        install();
        CrashRescue::keep(path(), "<profiles/>");
        std::raise(number);
    }

    void write(const QByteArray& bytes) const { writeFile(path(), bytes); }
    QByteArray content() const { return contentOf(path()); }

    std::unique_ptr<QTemporaryDir> ownFolder;
    QDir folder;
};

/// By this signal, or as sanitizers end a process that crashes.
class DiedOf
{
public:
    explicit DiedOf(int signalNumber) : number(signalNumber) {}

    bool operator()(int status) const
    {
        return WIFSIGNALED(status) ? WTERMSIG(status) == number : WEXITSTATUS(status) != 0;
    }

private:
    int number;
};

struct Signal
{
    int number;
    const char* name;
};

std::string nameOf(const ::testing::TestParamInfo<Signal>& tested)
{
    return tested.param.name;
}

class EverySignalDeathTest : public CrashRescueDeathTest,
                             public ::testing::WithParamInterface<Signal>
{};

/// Fills the stack. The sum keeps the calls from becoming a loop.
int useStack(volatile int depth)
{
    volatile char frame[4096];
    frame[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : useStack(depth + 1) + frame[0];
}
} // namespace

TEST_P(EverySignalDeathTest, WritesTheCopyTellsWhereAndEndsTheProcess)
{
    EXPECT_EXIT(keepAndRaise(GetParam().number), DiedOf(GetParam().number),
                "^The profiles were saved to /.*/copy.xml\n");
    EXPECT_EQ(content(), "<profiles/>");
}

INSTANTIATE_TEST_SUITE_P(All, EverySignalDeathTest,
                         ::testing::Values(Signal{SIGSEGV, "Segv"}, Signal{SIGBUS, "Bus"},
                                           Signal{SIGFPE, "Fpe"}, Signal{SIGILL, "Ill"},
                                           Signal{SIGABRT, "Abrt"}, Signal{SIGTERM, "Term"},
                                           Signal{SIGINT, "Int"}, Signal{SIGHUP, "Hup"}),
                         nameOf);

TEST_F(CrashRescueDeathTest, AFullStackLeavesRoomForTheCopy)
{
    EXPECT_EXIT(
        {
            install();
            CrashRescue::keep(path(), "<profiles/>");
            rlimit stack = {};
            getrlimit(RLIMIT_STACK, &stack);
            stack.rlim_cur = 8 * 1024 * 1024; // there may be no limit
            setrlimit(RLIMIT_STACK, &stack);
            useStack(0);
        },
        DiedOf(SIGSEGV), "^The profiles were saved to /.*/copy.xml\n");
    EXPECT_EQ(content(), "<profiles/>");
}

TEST_F(CrashRescueDeathTest, AFileOfTheCopysNameIsLeftAsItIs)
{
    write("of another editor");
    EXPECT_EXIT(keepAndRaise(SIGTERM), ::testing::KilledBySignal(SIGTERM), "^$");
    EXPECT_EQ(content(), "of another editor");
}

TEST_F(CrashRescueDeathTest, TheLastCopyCounts)
{
    EXPECT_EXIT(
        {
            install();
            CrashRescue::keep(folder.filePath("earlier.xml"), "earlier");
            CrashRescue::keep(path(), "later");
            std::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "copy.xml\n$");
    EXPECT_EQ(content(), "later");
    EXPECT_EQ(folder.entryList(QDir::Files), QStringList("copy.xml"));
}

TEST_F(CrashRescueDeathTest, NothingIsWrittenOfWhatIsForgotten)
{
    EXPECT_EXIT(
        {
            install();
            CrashRescue::keep(path(), "<profiles/>");
            CrashRescue::forget();
            std::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "^$");
    EXPECT_EQ(folder.entryList(QDir::Files), QStringList());
}

TEST_F(CrashRescueDeathTest, ASignalThatWasIgnoredBeforeStaysIgnored)
{
    EXPECT_EXIT(
        {
            sendStandardOutputToStandardError();
            std::signal(SIGHUP, SIG_IGN); // as for a program that is to outlive its terminal
            std::signal(SIGTERM, SIG_DFL);
            CrashRescue::install();
            CrashRescue::keep(path(), "<profiles/>");
            std::raise(SIGHUP);
            std::fprintf(stderr, "%d files\n", folder.entryList(QDir::Files).size());
            std::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "^0 files\nThe profiles were saved to /.*/copy.xml\n$");
    EXPECT_EQ(content(), "<profiles/>");
}
