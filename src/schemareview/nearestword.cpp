#include "schemareview/nearestword.h"

#include <QVector>

#include <algorithm>
#include <cstdlib>

namespace
{
constexpr int longestWord = 64;

/// Returns the number of typing errors that turn one word into the other; at most `most`.
int slipsBetween(const QString& one, const QString& other, int most)
{
    if (std::abs(one.size() - other.size()) >= most) {
        return most;
    }
    QVector<int> beforeLast(other.size() + 1);
    QVector<int> last(other.size() + 1);
    QVector<int> row(other.size() + 1);
    for (int j = 0; j <= other.size(); ++j) {
        row[j] = j;
    }
    for (int i = 1; i <= one.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (int j = 1; j <= other.size(); ++j) {
            const int changed = one.at(i - 1) == other.at(j - 1) ? 0 : 1;
            row[j] = std::min({last.at(j) + 1, row.at(j - 1) + 1, last.at(j - 1) + changed});
            const bool isSwapped = i > 1 && j > 1 && one.at(i - 1) == other.at(j - 2)
                                   && one.at(i - 2) == other.at(j - 1);
            if (isSwapped) {
                row[j] = std::min(row.at(j), beforeLast.at(j - 2) + 1);
            }
        }
    }
    return std::min(most, row.last());
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
        const int slips = slipsBetween(candidate.toLower(), lower, least);
        if (slips < least) {
            least = slips;
            nearest = candidate;
        }
    }
    return nearest;
}
