#pragma once

#include "schemareview/reviewedstruct.h"

#include <optional>

namespace HParser
{
/// Checks the values of a struct's formulas while its settings have their defaults.
class NumbersReview
{
public:
    /// REQUIRES: a struct whose formulas can all be evaluated.
    explicit NumbersReview(ReviewedStruct& reviewedStruct) : structure(reviewedStruct) {}

    void check();

    /// Returns the number of the struct in an image; nothing if it has none.
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
