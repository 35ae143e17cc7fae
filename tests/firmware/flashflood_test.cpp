// Uploaders that print far more than they should during a flash, and a full disk.

#include "support/filesizelimit.h"
#include "support/gui/flashertest.h"
#include "support/gui/flood.h"
#include "support/gui/memory.h"

#include <QFileInfo>
#include <QLabel>

namespace
{
constexpr int flood = 100000000;
constexpr long mebibyte = 1024; // in KiB

class FlashFloodTest : public FlasherTest
{
protected:
    static qint64 logSize() { return QFileInfo("logs/" + logNames().value(0)).size(); }

    /// The run continues to its end without a log.
    void finishUnlogged(int stagesDone)
    {
        const QList<QByteArray> milestones = {"All flash above bldr erased\n", "hex file loaded\n",
                                              "Flash Write success\n", "Verified Flash OK\n"};
        const QList<QLabel*> marks = {form.eraseFlashCM, form.loadFileCM, form.uploadCM,
                                      form.verifyCM};
        DialogScript script;
        script.thenDo([](QWidget& dialog) { dialog.close(); });
        for (int i = stagesDone; i < milestones.size(); ++i) {
            uploader.print(milestones.at(i));
            QLabel* mark = marks.at(i);
            EXPECT_TRUE(waitThroughFlood([mark] { return !mark->isHidden(); })) << i;
        }
        waitForReport();
    }
};
} // namespace

TEST_F(FlashFloodTest, OutputIsLoggedWholeAndNotKeptInMemory)
{
    start();
    const PeakMemory memory;
    uploader.run("yes 'Bootloader Version is 7%' | head -c " + QByteArray::number(flood));
    EXPECT_TRUE(waitThroughFlood([] { return logSize() >= flood; })) << logSize();
    EXPECT_LT(memory.grown(), 60 * mebibyte);
    finishUnlogged(0);
}

TEST_F(FlashFloodTest, ZeroBytesAreLoggedAndTheRunGoesOn)
{
    start();
    const PeakMemory memory;
    uploader.run("head -c " + QByteArray::number(flood) + " /dev/zero");
    EXPECT_TRUE(waitThroughFlood([] { return logSize() >= flood; })) << logSize();
    EXPECT_LT(memory.grown(), 60 * mebibyte);
    finishUnlogged(0);
}

TEST_F(FlashFloodTest, ErrorOutputIsNotKeptInMemory)
{
    start();
    const PeakMemory memory;
    uploader.run("head -c " + QByteArray::number(flood) + " /dev/zero >&2");
    finishUnlogged(0);
    EXPECT_LT(memory.grown(), 60 * mebibyte);
}

TEST_F(FlashFloodTest, FullDiskCostsOnlyTheLog)
{
    start();
    const PeakMemory memory;
    const FileSizeLimit fullDisk(1000);
    uploader.run("yes | head -c 10000000");
    finishUnlogged(0);
    EXPECT_LE(logSize(), 1000);
    EXPECT_LT(memory.grown(), 60 * mebibyte);
}
