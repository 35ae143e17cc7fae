#include "base/quotedtext.h"

#include "support/printing.h"

namespace
{
TEST(QuotedText, StandsOnOneLineInQuotes)
{
    EXPECT_EQ(quotedText(""), "\"\"");
    EXPECT_EQ(quotedText(" two\n lines\t"), "\"two lines\"");
}

TEST(QuotedText, IsCutAfterFortyCharacters)
{
    EXPECT_EQ(quotedText(QString(40, 'x')), '"' + QString(40, 'x') + '"');
    EXPECT_EQ(quotedText(QString(41, 'x')), '"' + QString(40, 'x') + QChar(0x2026) + '"');
}

TEST(QuotedText, IsNotCutInsideACharacter)
{
    const QString twoUnits = QString::fromUtf8("\xF0\x9F\x94\x8B"); // a battery
    EXPECT_EQ(quotedText(QString(39, 'x') + twoUnits),
              '"' + QString(39, 'x') + QChar(0x2026) + '"');
}
} // namespace
