#include "schemareview/nearestword.h"

#include <QVector>

#include <algorithm>
#include <cstdlib>

namespace
{
constexpr int longestWord = 64;

/// Returns the smallest number of slips that turn one word into the other.
int slipsBetween(const QString& one, const QString& other)
{
    // Between the beginnings of the words.
    QVector<QVector<int>> slips(one.size() + 1, QVector<int>(other.size() + 1));
    for (int i = 0; i <= one.size(); ++i) {
        for (int j = 0; j <= other.size(); ++j) {
            int least = i + j; // one of the beginnings is empty
            if (i > 0 && j > 0) {
                const int changed = one.at(i - 1) == other.at(j - 1) ? 0 : 1;
                least = std::min({slips.at(i - 1).at(j) + 1, slips.at(i).at(j - 1) + 1,
                                  slips.at(i - 1).at(j - 1) + changed});
            }
            const bool isSwapped = i > 1 && j > 1 && one.at(i - 1) == other.at(j - 2)
                                   && one.at(i - 2) == other.at(j - 1);
            slips[i][j] = isSwapped ? std::min(least, slips.at(i - 2).at(j - 2) + 1) : least;
        }
    }
    return slips.last().last();
}
} // namespace

QString nearestWord(const QString& word, const QStringList& candidates)
{
    if (word.size() > longestWord) {
        return {};
    }
    const QString lower = word.toLower();
    QString nearest;
    int least = std::max(2, word.size() / 3 + 1); // one more than the allowed number
    for (const QString& candidate : candidates) {
        const bool mayBeNear = std::abs(candidate.size() - word.size()) < least;
        const int slips = mayBeNear ? slipsBetween(candidate.toLower(), lower) : least;
        if (slips < least) {
            least = slips;
            nearest = candidate;
        }
    }
    return nearest;
}
