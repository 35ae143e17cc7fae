#include "HEXGeneratorParser/hexbufferread.h"

#include "support/imagesupport.h"

#include <csignal>

using HEXGeneratorParser::HexBufferRead;
using ImageSupport::bytesOf;
using ImageSupport::hex;
using ::testing::KilledBySignal;

namespace
{
/// An image and its cursor.
class Reading
{
public:
    explicit Reading(const QByteArray& image)
        : bytes(image),
          cursor(reinterpret_cast<const unsigned char*>(bytes.constData()), nullptr, bytes.size())
    {}

    HexBufferRead* operator->() { return &cursor; }

private:
    QByteArray bytes;
    HexBufferRead cursor;
};
} // namespace

TEST(HexBufferRead, StepsOverThePaddingByteOfEveryWord)
{
    Reading reading(bytesOf({1, 2, 3, 0, 4, 5, 6, 0, 7}));
    for (int expected = 1; expected <= 7; ++expected) {
        EXPECT_EQ(reading->readByte(), expected);
    }
}

TEST(HexBufferRead, ReadsTheTypesOfTheCharger)
{
    Reading reading(bytesOf({0xC8, 0xB0, 0x05, 0, 1, 2, 3, 0, 4}));
    EXPECT_EQ(reading->readData("unsigned char"), 200U);
    EXPECT_EQ(reading->readData("int"), 1456U);
    EXPECT_EQ(reading->readData("long"), 0x04030201U);
}

TEST(HexBufferRead, NumbersHaveNoSign)
{
    Reading reading(bytesOf({0xFF, 0xFF}));
    EXPECT_EQ(reading->readData("int"), 65535U);
}

TEST(HexBufferRead, AnUnknownTypeReadsNothing)
{
    Reading reading(bytesOf({7}));
    EXPECT_EQ(reading->readData("float"), 0U);
    EXPECT_EQ(reading->readByte(), 7);
}

TEST(HexBufferRead, AByteOrderMarkIsACharacterOfTheText)
{
    Reading reading(bytesOf({0xEF, 0xBB, 0xBF, 0, 'a', 0}));
    EXPECT_EQ(reading->readString(5), QString(QChar(0xFEFF)) + 'a');
}

TEST(HexBufferRead, TextEndsAtTheFirstZero)
{
    Reading reading(bytesOf({'h', 'i', 0, 0, 'x', 9}));
    EXPECT_EQ(reading->readString(4), QStringLiteral("hi"));
    EXPECT_EQ(reading->readByte(), 9) << "the whole array was read";
}

TEST(HexBufferRead, TextWithoutAZeroFillsItsArray)
{
    Reading reading(bytesOf({'a', 'b', 'c', 0, 'd', 'e'}));
    EXPECT_EQ(reading->readString(4), QStringLiteral("abcd"));
    EXPECT_EQ(reading->readString(0), QString());
}

TEST(HexBufferRead, TextIsUtf8)
{
    Reading reading(bytesOf({0xC3, 0xA4, 0}));
    EXPECT_EQ(reading->readString(3), QStringLiteral("ä"));
}

TEST(HexBufferRead, ReadsBitsFromBelowAcrossBytesAndPadding)
{
    Reading reading(bytesOf({0b00001011, 0, 0x80, 0, 0x01}));
    EXPECT_TRUE(reading->readBit());
    EXPECT_TRUE(reading->readBit());
    EXPECT_FALSE(reading->readBit());
    EXPECT_TRUE(reading->readBit());
    EXPECT_EQ(hex(reading->readBits(19)), "00 00 00");
    EXPECT_EQ(hex(reading->readBits(2)), "03")
        << "the last bit before and the first behind padding";
}

TEST(HexBufferRead, PacksBitsEightToAByte)
{
    Reading reading(bytesOf({0xB5, 0x0F}));
    EXPECT_EQ(hex(reading->readBits(12)), "B5 0F");
    EXPECT_EQ(hex(reading->readBits(0)), "");
}

TEST(HexBufferRead, WholeBytesFollowEightBits)
{
    Reading reading(bytesOf({0xFF, 0x12}));
    reading->readBits(8);
    EXPECT_EQ(reading->readByte(), 0x12);
}

TEST(HexBufferReadDeathTest, WholeByteInsideARunOfBitsIsFatal)
{
    Reading reading(bytesOf({1, 2}));
    reading->readBit();
    EXPECT_EXIT(
        reading->readByte(), KilledBySignal(SIGABRT),
        "ASSERT: \"bitIndex == 0\" in file HEXGeneratorParser/hexbufferread\\.cpp, line [0-9]+\n");
}

TEST(HexBufferRead, SumsTheStructsBytesReadSoFar)
{
    Reading reading(bytesOf({200, 100, 50, 0, 25, 0xFF, 0xFF, 0, 9}));
    EXPECT_EQ(reading->sumBytesStruct(), 0);
    for (int i = 0; i < 4; ++i) {
        reading->readByte();
    }
    EXPECT_EQ(reading->sumBytesStruct(), 375);
    reading->finishReadingStruct();
    EXPECT_EQ(reading->sumBytesStruct(), 0);
    EXPECT_EQ(reading->readByte(), 9);
    EXPECT_EQ(reading->sumBytesStruct(), 9);
}

TEST(HexBufferRead, SumsPaddingBytesThatAreNotZero)
{
    Reading reading(bytesOf({200, 100, 50, 7, 25, 0xFF, 0xFF, 11, 9}));
    EXPECT_EQ(reading->readString(2).size(), 2);
    EXPECT_EQ(reading->sumBytesStruct(), 300);
    EXPECT_EQ(reading->readByte(), 50);
    EXPECT_EQ(reading->sumBytesStruct(), 357) << "stepped over, and counted";
    EXPECT_EQ(reading->readByte(), 25);
    EXPECT_EQ(reading->sumBytesStruct(), 382);
    reading->finishReadingStruct();
    EXPECT_EQ(reading->readByte(), 9);
    EXPECT_EQ(reading->sumBytesStruct(), 9) << "the closing one belongs to no structure";
}

TEST(HexBufferRead, FinishingAtAWordsEndStaysThere)
{
    Reading reading(bytesOf({1, 2, 3, 0, 4}));
    reading->readString(3);
    reading->finishReadingStruct();
    EXPECT_EQ(reading->readByte(), 4);
}

TEST(HexBufferRead, NeverLeavesTheImage)
{
    Reading reading(bytesOf({1, 2, 3, 0}));
    EXPECT_EQ(reading->readData("short"), 0x0201U);
    EXPECT_FALSE(reading->isPastEnd());
    EXPECT_EQ(reading->readString(2147483647), QString(QChar(3)));
    EXPECT_TRUE(reading->isPastEnd());
    EXPECT_TRUE(reading->atEnd());
    EXPECT_EQ(reading->readByte(), 0);
    EXPECT_EQ(reading->sumBytesStruct(), 6);
}

TEST(HexBufferRead, AnImageThatEndsInsideAWordHasNoPaddingByte)
{
    const QByteArray bytes = bytesOf({1, 2, 3, 99});
    HexBufferRead cursor(reinterpret_cast<const unsigned char*>(bytes.constData()), nullptr, 3);
    cursor.readString(3);
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(cursor.sumBytesStruct(), 6);
}

TEST(HexBufferRead, BitsStopAtTheEndToo)
{
    Reading reading(bytesOf({1, 2, 0xFF, 0}));
    reading->readBits(2147483647);
    EXPECT_TRUE(reading->isPastEnd());
    EXPECT_EQ(reading->sumBytesStruct(), 258);
}

TEST(HexBufferRead, ReadingToTheVeryEndIsNotPastIt)
{
    Reading reading(bytesOf({1, 2, 3, 0}));
    reading->readString(3);
    EXPECT_TRUE(reading->atEnd());
    EXPECT_FALSE(reading->isPastEnd());
}
