#include "profilepairs.h"

#include "profiles/profilesettings.h"

#include <QVector>

#include <algorithm>

namespace
{
using Profiles = QList<const ProfileSettings*>;
using ProfilePairs::Pair;

bool areNamesakes(const ProfileSettings* one, const ProfileSettings* other)
{
    return one->chemistry == other->chemistry && one->getTitle() == other->getTitle();
}

/// Longest common subsequence of profiles with the same title and chemistry.
QList<Pair> namesakes(const Profiles& left, const Profiles& right)
{
    constexpr qint64 mostSteps = 4000000;
    QList<Pair> pairs;
    if (static_cast<qint64>(left.size()) * right.size() > mostSteps) {
        for (int i = 0; i < std::min(left.size(), right.size()); ++i) {
            if (areNamesakes(left.at(i), right.at(i))) {
                pairs.append({i, i});
            }
        }
        return pairs;
    }
    const int columns = right.size() + 1;
    QVector<int> lengths((left.size() + 1) * columns);
    for (int i = left.size() - 1; i >= 0; --i) {
        for (int j = right.size() - 1; j >= 0; --j) {
            lengths[i * columns + j] =
                areNamesakes(left.at(i), right.at(j))
                    ? lengths.at((i + 1) * columns + j + 1) + 1
                    : std::max(lengths.at((i + 1) * columns + j), lengths.at(i * columns + j + 1));
        }
    }
    for (int i = 0, j = 0; i < left.size() && j < right.size();) {
        if (areNamesakes(left.at(i), right.at(j))) {
            pairs.append({i++, j++});
        } else if (lengths.at((i + 1) * columns + j) >= lengths.at(i * columns + j + 1)) {
            ++i;
        } else {
            ++j;
        }
    }
    return pairs;
}
} // namespace

QList<Pair> ProfilePairs::find(const Profiles& left, const Profiles& right)
{
    QList<Pair> pairs;
    int i = 0;
    int j = 0;
    QList<Pair> anchors = namesakes(left, right);
    anchors.append({left.size(), right.size()});
    for (const Pair& next : qAsConst(anchors)) {
        while (i < next.left || j < next.right) {
            const bool hasBoth = i < next.left && j < next.right;
            if (hasBoth && left.at(i)->chemistry == right.at(j)->chemistry) {
                pairs.append({i++, j++});
            } else if (i < next.left) {
                pairs.append({i++, -1});
            } else {
                pairs.append({-1, j++});
            }
        }
        if (i < left.size() && j < right.size()) {
            pairs.append({i++, j++});
        }
    }
    return pairs;
}
