#include "support/bundleprogram.h"

#include <QRegularExpression>
#include <QSet>

namespace
{
const QString pagePath = KELVARON_SOURCE_DIR "/docs/man/kelvaron-profiles.1";

class ManPageTest : public BundleProgramTest
{
protected:
    /// The page without its markup.
    static QString page()
    {
        QFile file(pagePath);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).remove('\\');
    }

    /// The long options in a help text.
    QSet<QString> optionsOf(const QStringList& command) const
    {
        static const QRegularExpression option("--[a-z]+");
        QSet<QString> options;
        auto match = option.globalMatch(
            QString::fromUtf8(runProfiles(command + QStringList("--help")).output));
        while (match.hasNext()) {
            options.insert(match.next().captured());
        }
        return options;
    }

    /// The complaints of a checker of manual pages; fails the test if it is not installed.
    QByteArray complaintsOf(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.start(program, arguments + QStringList(pagePath));
        EXPECT_TRUE(process.waitForFinished(patience));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return program == "man" ? process.readAllStandardError() : process.readAllStandardOutput();
    }
};
} // namespace

TEST_F(ManPageTest, NamesEveryCommandAndOption)
{
    const QString text = page();
    for (const QStringList& command :
         {QStringList("check"), QStringList("convert"), QStringList("show"), QStringList("diff"),
          QStringList("read"), QStringList("write"), QStringList("verify"),
          QStringList({"bundle", "pack"}), QStringList({"bundle", "check"}),
          QStringList({"bundle", "list"}), QStringList({"bundle", "extract"}), QStringList()}) {
        EXPECT_TRUE(contains(text, "kelvaron-profiles " + command.join(' ')));
        const QSet<QString> options = optionsOf(command);
        EXPECT_TRUE(contains(options, "--help"));
        for (const QString& option : options) {
            EXPECT_TRUE(contains(text, option)) << option;
        }
    }
}

TEST_F(ManPageTest, NamesEveryExitCode)
{
    const QString status = page().section(".SH EXIT STATUS", 1).section(".SH", 0, 0);
    for (const char* code : {"0", "1", "2", "3", "4"}) {
        EXPECT_TRUE(contains(status, QString(".B %1\n").arg(code))) << code;
    }
}

TEST_F(ManPageTest, PassesTheManualProgram)
{
    EXPECT_EQ(complaintsOf("man", {"--warnings", "-l", "-Tutf8"}), "");
}

TEST_F(ManPageTest, PassesMandoc)
{
    EXPECT_EQ(complaintsOf("mandoc", {"-T", "lint", "-W", "style"}), "");
}
