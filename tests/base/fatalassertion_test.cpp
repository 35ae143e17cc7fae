#include "base/fatalassertion.h"

#include "base/fatalcontext.h"
#include "base/installedfilescope.h"
#include "support/printing.h"
#include "support/standardoutputcapture.h"

#include <QList>

#include <csignal>

using ::testing::KilledBySignal;

namespace
{
class NamedContext : public FatalContext
{
public:
    explicit NamedContext(QString contextName) : name(std::move(contextName)) {}

protected:
    QString describe() const override { return name; }

private:
    QString name;
};

void failWhileWorkingOnALine()
{
    sendStandardOutputToStandardError();
    InstalledFileScope scope("settings.cb");
    scope.setLine(17, "    broken line; //");
    KELVARON_ASSERT(false);
}

void failAfterTheLine()
{
    sendStandardOutputToStandardError();
    InstalledFileScope scope("settings.cb");
    scope.setLine(17, "harmless line");
    scope.clearLine();
    KELVARON_ASSERT(false);
}

void failWithLastStep()
{
    FatalAssertion::setLastStep([](const FatalAssertion::Report& report) {
        std::fprintf(stderr, "last step: [%s] [%s] [%s]\n", qUtf8Printable(report.assertion),
                     qUtf8Printable(report.context), qUtf8Printable(report.installedFile));
    });
    InstalledFileScope scope("settings.cb");
    const NamedContext context("Working");
    KELVARON_ASSERT_TEXT(false, "some condition");
}

void failInsideLastStep()
{
    FatalAssertion::setLastStep([](const FatalAssertion::Report&) {
        std::fprintf(stderr, "last step\n");
        KELVARON_ASSERT_TEXT(false, "second failure");
    });
    KELVARON_ASSERT_TEXT(false, "first failure");
}

void failWithLastStepRemoved()
{
    FatalAssertion::setLastStep([](const FatalAssertion::Report&) { std::_Exit(0); });
    FatalAssertion::setLastStep({});
    KELVARON_ASSERT(false);
}
} // namespace

TEST(FatalAssertionTest, DoesNothingWhenTheConditionHolds)
{
    int evaluations = 0;
    KELVARON_ASSERT(++evaluations == 1);
    KELVARON_ASSERT_TEXT(++evaluations == 2, "text");
    EXPECT_EQ(evaluations, 2);
}

TEST(FatalAssertionTest, GivesElementsInRange)
{
    const QList<int> numbers = {10, 20, 30};
    EXPECT_EQ(KELVARON_AT(numbers, 0), 10);
    EXPECT_EQ(KELVARON_AT(numbers, 2), 30);
}

TEST(FatalAssertionDeathTest, NamesConditionFileAndLine)
{
    const int answer = 41;
    EXPECT_EXIT(KELVARON_ASSERT(answer == 42), KilledBySignal(SIGABRT),
                "ASSERT: \"answer == 42\" in file .*fatalassertion_test.cpp, line [0-9]+");
    EXPECT_EXIT(KELVARON_ASSERT_TEXT(answer == 42, "other words"), KilledBySignal(SIGABRT),
                "ASSERT: \"other words\" in file .*fatalassertion_test.cpp, line [0-9]+");
}

TEST(FatalAssertionDeathTest, NamesTheFileBelowTheSourceFolder)
{
    EXPECT_EXIT(FatalAssertion::fail("condition", "/home/src/editor/src/CBGenerator/x.cpp", 7),
                KilledBySignal(SIGABRT),
                "ASSERT: \"condition\" in file CBGenerator/x.cpp, line 7\n");
}

TEST(FatalAssertionDeathTest, IndexOutOfRangeIsFatal)
{
    const QList<int> numbers = {10, 20, 30};
    for (const int index : {3, -1, 1000}) {
        EXPECT_EXIT(KELVARON_AT(numbers, index), KilledBySignal(SIGABRT),
                    "ASSERT: \"index out of range\" in file .*fatalassertion_test.cpp");
    }
}

TEST(FatalAssertionDeathTest, PrintsFileAndLineBeingWorkedOn)
{
    EXPECT_EXIT(failWhileWorkingOnALine(), KilledBySignal(SIGABRT),
                "settings.cb.*17.*broken line; //");
}

TEST(FatalAssertionDeathTest, PrintsOnlyTheFileWhenNoLineIsToBlame)
{
    EXPECT_EXIT(failAfterTheLine(), KilledBySignal(SIGABRT), "settings.cb\n");
}

TEST(FatalAssertionDeathTest, RunsTheLastStepWithTheReport)
{
    EXPECT_EXIT(failWithLastStep(), KilledBySignal(SIGABRT),
                "last step: \\[ASSERT: \"some condition\" in file .*fatalassertion_test.cpp, line "
                "[0-9]+\\] \\[.*settings.cb\nWorking\\] \\[settings.cb\\]");
}

TEST(FatalAssertionDeathTest, FailureInsideTheLastStepAbortsAtOnce)
{
    EXPECT_EXIT(failInsideLastStep(), KilledBySignal(SIGABRT),
                "first failure.*last step\nASSERT: \"second failure\"[^\n]*\n$");
}

TEST(FatalAssertionDeathTest, LastStepCanBeRemoved)
{
    EXPECT_EXIT(failWithLastStepRemoved(), KilledBySignal(SIGABRT), "ASSERT: \"false\"");
}

TEST(FatalContextTest, NestsOutermostFirst)
{
    EXPECT_TRUE(FatalContext::describeAll().isEmpty());
    const NamedContext outer("outer");
    {
        const NamedContext inner("inner");
        EXPECT_EQ(FatalContext::describeAll(), "outer\ninner");
    }
    EXPECT_EQ(FatalContext::describeAll(), "outer");
}

TEST(FatalContextTest, BlamesTheOutermostFile)
{
    EXPECT_TRUE(FatalContext::blamedFile().isEmpty());
    const NamedContext unblamed("no file");
    EXPECT_TRUE(FatalContext::blamedFile().isEmpty());
    {
        InstalledFileScope outer("a.kelvaron");
        InstalledFileScope inner("b.cb"); // was read from the outer file
        const NamedContext deeper("no file");
        EXPECT_EQ(FatalContext::blamedFile(), "a.kelvaron");
    }
    EXPECT_TRUE(FatalContext::blamedFile().isEmpty());
}
