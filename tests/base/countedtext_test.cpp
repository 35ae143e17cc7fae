#include "base/countedtext.h"

#include "support/printing.h"

TEST(CountedTextTest, OneIsSingularAndAllOthersArePlural)
{
    EXPECT_EQ(countedText(1, "bit", "bits"), "1 bit");
    EXPECT_EQ(countedText(0, "bit", "bits"), "0 bits");
    EXPECT_EQ(countedText(2, "bit", "bits"), "2 bits");
    EXPECT_EQ(countedText(21, "bit", "bits"), "21 bits");
}
