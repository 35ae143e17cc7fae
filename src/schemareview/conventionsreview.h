#pragma once

#include "schemareview/reviewedstruct.h"

namespace HParser
{
/// Checks the settings that the editor and the charger rely on: "type", "checksum" and, in a chemistry,
/// the flags, a title and a subtitle.
class ConventionsReview
{
public:
    explicit ConventionsReview(ReviewedStruct& reviewedStruct) : structure(reviewedStruct) {}

    /// Returns false if a flag has no member; the bits of the struct are then not worth checking.
    bool check();

private:
    bool checkFlags();
    const ReviewedStruct::Member* memberMeant(const QString& name) const;
    void checkTypeMember();
    void checkChecksum();

    ReviewedStruct& structure;
};
} // namespace HParser
