#pragma once

#include "schemareview/reviewedstruct.h"

#include <QMap>

namespace HParser
{
/// Checks the names of a struct's members: C names, and the XML tags made of their labels.
class NamesReview
{
public:
    explicit NamesReview(ReviewedStruct& reviewedStruct) : structure(reviewedStruct) {}

    void check();

private:
    void checkTag(const ReviewedStruct::Member& member, QMap<QString, int>& lines);

    ReviewedStruct& structure;
};
} // namespace HParser
