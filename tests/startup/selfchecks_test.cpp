// Self-checks that fail: the process ends abnormally, without a message box and before anything of
// the installation is touched.

#include "support/scriptedinstallation.h"

namespace
{
class SelfCheckTest : public StartupTest
{
protected:
    /// Starts with one check that fails.
    Start startWithFailing(const QString& check)
    {
        writeBundle("v1.kelvaron");
        return startWith({{"SCRIPTED_FAILING_CHECK", check}});
    }

    void expectSilentEnd(const Start& started, const QString& condition,
                         const QString& source) const
    {
        EXPECT_TRUE(started.crashed) << started.transcript();
        EXPECT_EQ(started.exitCode, SIGABRT) << started.transcript();
        expectAssertion(started, condition, source);
        EXPECT_EQ(started.boxes().size(), 0) << started.transcript();
        EXPECT_FALSE(started.mainWindowShown()) << started.transcript();
        EXPECT_EQ(started.count("Bundle file being used"), 0) << started.transcript();
        EXPECT_FALSE(exists("device.txt"));
        EXPECT_FALSE(exists("saved_profiles"));
    }
};

TEST_F(SelfCheckTest, AllRunInTheirOrderAtEveryStart)
{
    writeBundle("v1.kelvaron");
    const Start started = startWith({{"SCRIPTED_FAILING_CHECK", "none"}});
    expectStarted(started);
    EXPECT_EQ(started.lines.filter(QRegularExpression("^CHECKING ")),
              QStringList({"CHECKING byte order", "CHECKING image writer", "CHECKING bit buffer",
                           "CHECKING image helpers", "CHECKING version strings"}));
}

TEST_F(SelfCheckTest, AnotherByteOrderEndsWithoutAMessageBox)
{
    expectSilentEnd(startWithFailing("byte order"),
                    "HEXGeneratorParser::HexUtility::machineIsLittleEndian()", "mainwindow.cpp");
}

TEST_F(SelfCheckTest, AWrongAnswerEndsWithoutAMessageBox)
{
    for (const QString check : {"image writer", "bit buffer", "image helpers", "version strings"}) {
        expectSilentEnd(startWithFailing(check), check, "support/failingselfchecks.cpp");
    }
}
} // namespace
