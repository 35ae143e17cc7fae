#include "CBGenerator/storabletext.h"

#include "support/chargerschema.h"
#include "support/imagesupport.h"

using ImageSupport::generatorOf;
using ImageSupport::profileOf;
using ImageSupport::setValue;

namespace
{
TEST(StorableText, HoldsAsciiAlone)
{
    EXPECT_EQ(StorableText::unstorable(""), "");
    EXPECT_EQ(StorableText::unstorable("LiPo 3S (old) ~\x7F\t"), "");
    EXPECT_EQ(StorableText::unstorable(QString(QChar(0x80))), QString(QChar(0x80)));
    EXPECT_EQ(StorableText::unstorable(QString::fromUtf8("4\xC2\xB0, \xCE\xA9")),
              QString::fromUtf8("\xC2\xB0\xCE\xA9"));
}

TEST(StorableText, AZeroWouldEndTheText)
{
    EXPECT_EQ(StorableText::unstorable(QString("a") + QChar(0) + "b"), QString(QChar(0)));
}

TEST(StorableText, ComplaintsNameSettingProfileAndCharacters)
{
    const auto generator = generatorOf(ChargerSchema::header(ChargerSchema::chemistry(
        "A", ChargerSchema::typeMember("2") + ChargerSchema::titleMember
                 + "    char note[8]; // string, auto, \"Note\", G, \"\", 1, basic\n"
                   "    char mode[8]; // list, auto, \"Mode\", G, \"Slow\", 2, \"Slow\", basic\n"
                 + ChargerSchema::checksumMember)));
    const auto profile = profileOf(*generator, "A");
    EXPECT_EQ(StorableText::complaints(*profile, "Battery"), QStringList());
    setValue(*profile, "Title", "B\xC3\xA4r");
    setValue(*profile, "Mode", "\xC3\xA9");
    EXPECT_EQ(StorableText::complaints(*profile, QString::fromUtf8("B\xC3\xA4r")),
              QStringList({QString::fromUtf8("Title of the profile \"B\xC3\xA4r\": \"\xC3\xA4\""),
                           QString::fromUtf8("Mode of the profile \"B\xC3\xA4r\": \"\xC3\xA9\"")}));
}
} // namespace
