#include "base/linecapture.h"

#include "base/standardoutput.h"
#include "support/printing.h"
#include "support/standardoutputcapture.h"

TEST(LineCaptureTest, KeepsLinesFromStandardOutput)
{
    const StandardOutputCapture output;
    QStringList lines;
    {
        const LineCapture capture;
        printLine("one");
        printLine("two");
        lines = capture.lines();
    }
    printLine("three");
    EXPECT_EQ(lines, QStringList({"one", "two"}));
    EXPECT_EQ(output.text(), "three\n");
}

TEST(LineCaptureTest, TheInnermostTakesTheLines)
{
    const LineCapture outer;
    printLine("one");
    {
        const LineCapture inner;
        printLine("two");
        EXPECT_EQ(inner.lines(), QStringList("two"));
    }
    printLine("three");
    EXPECT_EQ(outer.lines(), QStringList({"one", "three"}));
}

TEST(LineCaptureTest, KeepsTheFirstHundredOfAFlood)
{
    const LineCapture capture;
    for (int i = 0; i < 1000; ++i) {
        printLine(QString::number(i));
    }
    ASSERT_EQ(capture.lines().size(), 100);
    EXPECT_EQ(capture.lines().last(), "99");
}
