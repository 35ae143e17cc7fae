#pragma once

#include "CBGenerator/reviewedstruct.h"

namespace HParser
{
/// Looks for the settings that the editor and the charger rely on: "type", "checksum" and, in a
/// chemistry, the flags, a title and a subtitle.
class ConventionsReview
{
public:
    explicit ConventionsReview(ReviewedStruct& reviewedStruct) : structure(reviewedStruct) {}

    void check();

private:
    void checkFlags();
    void checkTypeMember();
    void checkChecksum();

    ReviewedStruct& structure;
};
} // namespace HParser
