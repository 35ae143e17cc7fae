#pragma once

#include <QList>

class ProfileSettings;

/// Matches the profiles of two lists.
namespace ProfilePairs
{
/// Indices into the two lists; -1 for a profile without a partner.
struct Pair
{
    int left;
    int right;
};

/// Returns the pairs in the order of the lists. Profiles with the same title and chemistry are
/// paired, as many as possible without crossing; between these, profiles of the same chemistry are
/// paired in order.
QList<Pair> find(const QList<const ProfileSettings*>& left,
                 const QList<const ProfileSettings*>& right);
} // namespace ProfilePairs
