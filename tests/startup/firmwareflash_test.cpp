// The firmware tool without the main window, closed before, during and after a flash.

#include "support/scriptedinstallation.h"

namespace
{
class FirmwareToolOnlyFlashTest : public StartupTest
{
protected:
    void SetUp() override
    {
        StartupTest::SetUp();
        writeBundle("v1.kelvaron");
    }

    void expectOrderlyEnd(const Start& started) const
    {
        EXPECT_FALSE(started.crashed) << started.transcript();
        EXPECT_EQ(started.exitCode, 0) << started.transcript();
        EXPECT_EQ(started.count("FIRMWARE TOOL SHOWN"), 1) << started.transcript();
        EXPECT_FALSE(started.mainWindowShown()) << started.transcript();
        EXPECT_EQ(started.boxes().size(), 0) << started.transcript();
        EXPECT_FALSE(exists(".profile_editor_1.lock")) << "the folder looks like one in use";
    }
};

TEST_F(FirmwareToolOnlyFlashTest, ClosingRestoresTheDescriptionThatAnEarlierFlashLeft)
{
    writeFile("device_overwrite.txt", "left\n");
    expectOrderlyEnd(start({"-f"}));
    EXPECT_EQ(contentOf("device.txt"), "left\n");
    EXPECT_FALSE(exists("device_overwrite.txt"));
}

TEST_F(FirmwareToolOnlyFlashTest, ClosingAfterAFlashEndsWithZeroToo)
{
    // Each line once the one before it was read.
    writeFile("supl.mac", "#!/bin/sh\n"
                          "say() {\n"
                          "    echo \"$1\"\n"
                          "    for look in $(seq 5000); do\n"
                          "        grep -q \"$1\" logs/*.txt && return\n"
                          "    done\n"
                          "}\n"
                          "say 'All flash above bldr erased'\n"
                          "say 'hex file loaded'\n"
                          "say 'Flash Write success'\n"
                          "say 'Verified Flash OK'\n");
    ASSERT_TRUE(QFile::setPermissions(pathOf("supl.mac"), QFile::ReadOwner | QFile::ExeOwner));
    writeBundle("v2.kelvaron", BundleText()
                                   .section("device\n")
                                   .section(Samples::schema())
                                   .section("image\n")
                                   .section("keeping device\n"));
    const Start started = startWith({{"SCRIPTED_FIRMWARE", "v2.kelvaron"}}, {"-f"});
    expectOrderlyEnd(started);
    EXPECT_EQ(started.count("RESET QUESTION SHOWN"), 1) << started.transcript();
    EXPECT_EQ(contentOf("device.txt"), "device\n");
    EXPECT_FALSE(exists("device_overwrite.txt"));
}

TEST_F(FirmwareToolOnlyFlashTest, ClosingInTheMiddleLeavesNoUploaderBehind)
{
    writeFile("supl.mac", "#!/bin/sh\n"
                          "trap '' TERM HUP INT\n"
                          "echo $$ > started\n"
                          "mv started uploader.started\n"
                          "while :; do read -r line; done < pipe\n");
    ASSERT_TRUE(QFile::setPermissions(pathOf("supl.mac"), QFile::ReadOwner | QFile::ExeOwner));
    ASSERT_EQ(QProcess::execute("mkfifo", {pathOf("pipe")}), 0);
    writeBundle("v2.kelvaron", BundleText()
                                   .section("device\n")
                                   .section(Samples::schema())
                                   .section("image\n")
                                   .section("keeping device\n"));
    const Start started = startWith({{"SCRIPTED_FIRMWARE", "v2.kelvaron"}}, {"-f"});
    expectOrderlyEnd(started);
    const int pid = contentOf("uploader.started").trimmed().toInt();
    ASSERT_GT(pid, 0) << started.transcript();
    for (int look = 0; look < 1000 && kill(pid, 0) == 0; ++look) {
        QProcess::execute("true", {}); // init reaps it
    }
    EXPECT_NE(kill(pid, 0), 0);
    EXPECT_EQ(contentOf("device.txt"), "device\n");
    EXPECT_EQ(contentOf("hexToFlash.hex"), "image\n");
}
} // namespace
