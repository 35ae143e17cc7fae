#include "base/xmlutility.h"

#include "support/gui/widgets.h"

using XMLGeneratorParser::XMLUtility;

namespace
{
TEST(XmlTag, NamesAreInLowerCase)
{
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName("Title"), "title");
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName("PackVOLTAGE"), "packvoltage");
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName(QString::fromUtf8("GRÖSSE Ω")),
              QString::fromUtf8("grösse_ω"));
}

TEST(XmlTag, EachOfSixCharactersBecomesAnUnderscore)
{
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName("a b/c<d>e&f%g"), "a_b_c_d_e_f_g");
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName("  a//"), "__a__");
}

TEST(XmlTag, NothingElseIsChanged)
{
    const QString untouched = "voltage_(max.)-[2]\"'\t\n;:,#+*~!?=\\^";
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName(untouched), untouched);
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName("2nd stage"), "2nd_stage");
    EXPECT_EQ(XMLUtility::xmlTagFromDescriptiveName(""), "");
}

TEST(XmlEscape, FiveCharactersBecomeEntities)
{
    EXPECT_EQ(XMLUtility::escapeReservedChars("\""), "&quot;");
    EXPECT_EQ(XMLUtility::escapeReservedChars("&"), "&amp;");
    EXPECT_EQ(XMLUtility::escapeReservedChars("'"), "&apos;");
    EXPECT_EQ(XMLUtility::escapeReservedChars("<"), "&lt;");
    EXPECT_EQ(XMLUtility::escapeReservedChars(">"), "&gt;");
}

TEST(XmlEscape, EntitiesAreEscapedOnceMore)
{
    EXPECT_EQ(XMLUtility::escapeReservedChars("<b>\"A&amp;B\"</b>"),
              "&lt;b&gt;&quot;A&amp;amp;B&quot;&lt;/b&gt;");
}

TEST(XmlEscape, OtherCharactersAreLeft)
{
    const QString untouched = QString::fromUtf8("aZ09 \t\n\r%/;#äé電🔋`´");
    EXPECT_EQ(XMLUtility::escapeReservedChars(untouched), untouched);
    EXPECT_EQ(XMLUtility::escapeReservedChars(""), "");
}

TEST(XmlValue, ReservedCharactersAreEscaped)
{
    EXPECT_EQ(XMLUtility::valueText("1 < 2 & 3"), "1 &lt; 2 &amp; 3");
}

TEST(XmlValue, CharactersThatXmlCannotHoldAreLeftOut)
{
    QString text = "a";
    for (ushort code = 0; code < 0x20; ++code) {
        text += QChar(code);
    }
    text += QChar(0xFFFE);
    text += QChar(0xFFFF);
    EXPECT_EQ(XMLUtility::valueText(text + "b"), "a\t\n&#13;b");
}

TEST(XmlValue, HalvesOfPairsAreLeftOutAndPairsAreKept)
{
    const QString pair = QString::fromUtf8("🔋");
    const QChar high = pair.at(0);
    const QChar low = pair.at(1);
    EXPECT_EQ(XMLUtility::valueText(pair), pair);
    EXPECT_EQ(XMLUtility::valueText(QString("a") + high + "b"), "ab");
    EXPECT_EQ(XMLUtility::valueText(QString("a") + low + "b"), "ab");
    EXPECT_EQ(XMLUtility::valueText(QString(high)), "");
    EXPECT_EQ(XMLUtility::valueText(QString(low) + high), "");
    EXPECT_EQ(XMLUtility::valueText(QString(high) + pair + low), pair);
}

TEST(XmlValue, CharactersAtTheEdgesOfWhatXmlHoldsAreKept)
{
    const QString edges = QString(QChar(0x20)) + QChar(0x7F) + QChar(0x85) + QChar(0xD7FF)
                          + QChar(0xE000) + QChar(0xFFFD) + QChar(0x2028) + QChar(0xFEFF);
    EXPECT_EQ(XMLUtility::valueText(edges), edges);
}
} // namespace
