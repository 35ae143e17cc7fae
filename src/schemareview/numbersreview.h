#pragma once

#include "schemareview/reviewedstruct.h"

#include <optional>

namespace HParser
{
/// Looks at the values that the formulas of a struct give while its settings have their defaults.
class NumbersReview
{
public:
    /// REQUIRES: a struct without a problem that keeps its formulas from being evaluated.
    explicit NumbersReview(ReviewedStruct& reviewedStruct) : structure(reviewedStruct) {}

    void check();

    /// The number that tells the struct in an image; nothing when it has none.
    std::optional<int> type() const { return typeNumber; }

private:
    void checkTypeNumber(const ReviewedStruct::Member& member);
    void checkBounds(const ReviewedStruct::Member& member);
    void checkSteps(const ReviewedStruct::Member& member);
    void checkRange(const ReviewedStruct::Member& member);

    ReviewedStruct& structure;
    std::optional<int> typeNumber;
};
} // namespace HParser
