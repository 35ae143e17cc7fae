#include "HEXGeneratorParser/hexbuffer.h"

#include "HEXGeneratorParser/hexutility.h"
#include "support/imagesupport.h"
#include "support/standardoutputcapture.h"

#include <csignal>

using HEXGeneratorParser::HEXBuffer;
using HEXGeneratorParser::HexUtility;
using ImageSupport::bytesOf;
using ImageSupport::hex;
using ::testing::KilledBySignal;

namespace
{
QByteArray bytesIn(const HEXBuffer& buffer)
{
    QByteArray bytes;
    for (int i = 0; i < buffer.size(); ++i) {
        bytes.append(static_cast<char>(buffer.getByte(i)));
    }
    return bytes;
}

class HEXBufferTest : public ::testing::Test
{
protected:
    std::string content() const { return hex(bytesIn(buffer)); }

    HEXBuffer buffer{2048, nullptr};
};
} // namespace

TEST_F(HEXBufferTest, StartsEmpty)
{
    EXPECT_EQ(buffer.size(), 0);
    EXPECT_EQ(buffer.sumBytesStruct(), 0);
}

TEST_F(HEXBufferTest, PutsAPaddingByteBehindThreeBytes)
{
    for (const int byte : {120, 200, 10, 20, 30, 40, 50}) {
        buffer.appendByte(static_cast<char>(byte));
    }
    EXPECT_EQ(content(), hex(bytesOf({120, 200, 10, 0, 20, 30, 40, 0, 50})));
}

TEST_F(HEXBufferTest, AppendsArraysInOrder)
{
    buffer.appendByte(50);
    buffer.appendBytes(bytesOf({10, 20, 70}));
    EXPECT_EQ(content(), hex(bytesOf({50, 10, 20, 0, 70})));
}

TEST_F(HEXBufferTest, FillsAByteWithBitsFromBelow)
{
    for (const bool bit : {true, true, false, true}) {
        buffer.appendBit(bit);
    }
    EXPECT_EQ(content(), hex(bytesOf({0b00001011})));
}

TEST_F(HEXBufferTest, NinthBitOpensAByte)
{
    buffer.appendBits(bytesOf({0xFF, 0x01}), 9);
    EXPECT_EQ(content(), "FF 01");
}

TEST_F(HEXBufferTest, BitsSkipThePaddingByte)
{
    buffer.appendBits(bytesOf({1, 2, 3, 4}), 32);
    EXPECT_EQ(content(), "01 02 03 00 04");
}

TEST_F(HEXBufferTest, WholeBytesFollowEightBits)
{
    buffer.appendBits(bytesOf({0xA5}), 8);
    buffer.appendByte(0x11);
    EXPECT_EQ(content(), "A5 11");
}

TEST_F(HEXBufferTest, ClosingAnEmptyBufferFillsOneWord)
{
    buffer.finishWritingStruct();
    EXPECT_EQ(content(), "FF FF FF 00");
}

TEST_F(HEXBufferTest, ClosingFillsTheWordAndTheNextStructStartsItsOwn)
{
    buffer.appendByte(0x10);
    buffer.finishWritingStruct();
    buffer.appendByte(0x20);
    EXPECT_EQ(content(), "10 FF FF 00 20");
    EXPECT_EQ(buffer.getByte(4), 0x20);
}

TEST_F(HEXBufferTest, ClosingAFullWordAddsItsPaddingByteAlone)
{
    buffer.appendBytes(bytesOf({1, 2, 3}));
    buffer.finishWritingStruct();
    EXPECT_EQ(content(), "01 02 03 00");
}

TEST_F(HEXBufferTest, ClosingAgainAppendsNothing)
{
    buffer.appendByte(1);
    buffer.finishWritingStruct();
    buffer.finishWritingStruct();
    EXPECT_EQ(buffer.size(), 4);
}

TEST_F(HEXBufferTest, SumsTheBytesOfTheOpenStructAlone)
{
    buffer.appendBytes(bytesOf({200, 100}));
    buffer.finishWritingStruct();
    EXPECT_EQ(buffer.sumBytesStruct(), 0) << "all bytes lie before the struct";
    buffer.appendBytes(bytesOf({200, 100, 50, 25}));
    EXPECT_EQ(buffer.sumBytesStruct(), 375);
}

TEST_F(HEXBufferTest, ChecksumBehindAFullWordComesAfterThePaddingByte)
{
    buffer.appendBytes(bytesOf({1, 2, 3}));
    const int sum = buffer.sumBytesStruct();
    buffer.appendByte(static_cast<char>(HexUtility::getChecksumFromChecksumTotal(sum)));
    EXPECT_EQ(content(), "01 02 03 00 FA");
    EXPECT_EQ(buffer.sumBytesStruct() % 256, 0);
}

TEST_F(HEXBufferTest, PrintsEveryByte)
{
    buffer.appendBytes(bytesOf({0x0A, 0xFF}));
    const StandardOutputCapture capture;
    buffer.print();
    EXPECT_EQ(capture.text(), "0x0a 0xff \n");
}

TEST_F(HEXBufferTest, PassesItsOwnKnownAnswers)
{
    HEXBuffer::runTests();
}

using HEXBufferDeathTest = HEXBufferTest;

TEST_F(HEXBufferDeathTest, WholeByteInsideARunOfBitsIsFatal)
{
    buffer.appendBit(true);
    EXPECT_EXIT(
        buffer.appendByte(1), KilledBySignal(SIGABRT),
        "ASSERT: \"lastBitAdded==7\" in file HEXGeneratorParser/hexbuffer\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(buffer.appendBytes(bytesOf({1})), KilledBySignal(SIGABRT), "lastBitAdded==7");
}

TEST_F(HEXBufferDeathTest, IndexOutsideIsFatal)
{
    buffer.appendByte(1);
    EXPECT_EXIT(buffer.getByte(1), KilledBySignal(SIGABRT), "index out of range");
    EXPECT_EXIT(buffer.getByte(-1), KilledBySignal(SIGABRT), "index out of range");
}

TEST_F(HEXBufferDeathTest, MoreBitsThanBytesIsFatal)
{
    EXPECT_EXIT(buffer.appendBits(bytesOf({1}), 9), KilledBySignal(SIGABRT), "index out of range");
}

namespace
{
class HEXBufferFileTest : public HEXBufferTest
{
protected:
    QString path() const { return folder.filePath("image.hex"); }

    QStringList lines() const
    {
        return QString::fromLatin1(contentOf(path())).split('\n', Qt::SkipEmptyParts);
    }

    QTemporaryDir folder;
};
} // namespace

TEST_F(HEXBufferFileTest, EmptyBufferGivesAddressAndEndRecordAlone)
{
    ASSERT_TRUE(buffer.writeToFile(path(), 0x9C00));
    EXPECT_EQ(contentOf(path()), ":020000040001F9\n:00000001FF\n");
}

TEST_F(HEXBufferFileTest, StoresEveryWordHighByteFirst)
{
    buffer.appendBytes(bytesOf({0x11, 0x22, 0x33, 0x44}));
    ASSERT_TRUE(buffer.writeToFile(path(), 0x9C00));
    // 0x9C00 is byte address 0x13800. The fourth byte starts a word, blank in its other bytes.
    EXPECT_EQ(lines().at(1), ":10380000332211"
                             "00"
                             "FFFF44"
                             "00"
                             "FFFFFF00FFFFFF00"
                             "16");
    EXPECT_EQ(lines().last(), ":00000001FF");
}

TEST_F(HEXBufferFileTest, WritesOneRowFor256BytesAndTwoForOneMore)
{
    buffer.appendBytes(QByteArray(192, '\x01'));
    buffer.finishWritingStruct();
    ASSERT_EQ(buffer.size(), 256);
    ASSERT_TRUE(buffer.writeToFile(path(), 0));
    EXPECT_EQ(lines().size(), 1 + 16 + 1);
    buffer.appendByte(1);
    ASSERT_TRUE(buffer.writeToFile(path(), 0));
    EXPECT_EQ(lines().size(), 1 + 32 + 1);
}

TEST_F(HEXBufferFileTest, TellsWhenTheFileCannotBeWritten)
{
    EXPECT_FALSE(buffer.writeToFile(folder.filePath("missing/image.hex"), 0));
    EXPECT_FALSE(buffer.writeToFile(folder.path(), 0)) << "a folder";
}

TEST_F(HEXBufferFileTest, KeepsTheOldFileWhenTheAddressIsImpossible)
{
    writeFile(path(), "old");
    EXPECT_FALSE(buffer.writeToFile(path(), -2));
    EXPECT_FALSE(buffer.writeToFile(path(), 0x7FFFFFFF));
    EXPECT_EQ(contentOf(path()), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"image.hex"});
}
