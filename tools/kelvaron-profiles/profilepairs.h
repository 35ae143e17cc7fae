#pragma once

#include <QList>

class ProfileSettings;

/// Finds which profiles of two lists belong together.
namespace ProfilePairs
{
/// Indices into the two lists; -1 for a profile without a partner.
struct Pair
{
    int left;
    int right;
};

/// The pairs in the order of the lists. Profiles of the same title and chemistry belong together, as
/// many as can without crossing; between these, profiles of the same chemistry in their order.
QList<Pair> find(const QList<const ProfileSettings*>& left,
                 const QList<const ProfileSettings*>& right);
} // namespace ProfilePairs
