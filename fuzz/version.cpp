// Version strings, three lines per input: only the dotted ones are versions, and they are totally
// ordered.

#include "support/fuzztarget.h"
#include "versionstring.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace
{
bool isDotted(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    return std::all_of(parts.cbegin(), parts.cend(), [](const QString& part) {
        return !part.isEmpty() && std::all_of(part.cbegin(), part.cend(), [](QChar c) {
            return c >= QLatin1Char('0') && c <= QLatin1Char('9');
        });
    });
}

std::optional<VersionString> versionOf(const QString& text)
{
    FUZZ_EXPECT(VersionString::isDottedVersion(text) == isDotted(text));
    std::optional<VersionString> version;
    const bool isMade = FuzzTarget::runsToItsEnd([&] { version.emplace(text); });
    FUZZ_EXPECT(isMade == isDotted(text));
    if (version) {
        FUZZ_EXPECT(version->toString() == text);
        FUZZ_EXPECT(version->equalTo(*version));
        version->print();
    }
    return version;
}

int sign(bool isLess, bool isGreater)
{
    return isLess ? -1 : isGreater ? 1 : 0;
}

/// Compares digit by digit.
int expectedOrder(const QString& one, const QString& other)
{
    const auto numbers = [](const QString& text) {
        QStringList parts = text.split(QLatin1Char('.'));
        for (QString& part : parts) {
            while (part.size() > 1 && part.startsWith(QLatin1Char('0'))) {
                part.remove(0, 1);
            }
        }
        return parts;
    };
    const QStringList left = numbers(one);
    const QStringList right = numbers(other);
    for (int i = 0; i < std::min(left.size(), right.size()); ++i) {
        const QString& a = left.at(i);
        const QString& b = right.at(i);
        if (a != b) {
            const bool isLess = a.size() != b.size() ? a.size() < b.size() : a < b;
            return sign(isLess, !isLess);
        }
    }
    return sign(left.size() < right.size(), left.size() > right.size());
}

void checkPair(const VersionString& one, const VersionString& other)
{
    const int order = one.compare(other);
    FUZZ_EXPECT(order == -other.compare(one));
    FUZZ_EXPECT(one.lessThan(other) == (order < 0));
    FUZZ_EXPECT(one.greaterThan(other) == (order > 0));
    FUZZ_EXPECT(one.equalTo(other) == (order == 0));
    FUZZ_EXPECT(one.lessThanEqualTo(other) == (order <= 0));
    FUZZ_EXPECT(one.greaterThanEqualTo(other) == (order >= 0));
    FUZZ_EXPECT(expectedOrder(one.toString(), other.toString()) == order);
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QStringList lines =
        QString::fromUtf8(FuzzTarget::bytesOf(data, size)).split(QLatin1Char('\n'));
    const auto a = versionOf(lines.value(0));
    const auto b = versionOf(lines.value(1));
    const auto c = versionOf(lines.value(2));
    if (a && b) {
        checkPair(*a, *b);
    }
    if (a && b && c && a->lessThanEqualTo(*b) && b->lessThanEqualTo(*c)) {
        FUZZ_EXPECT(a->lessThanEqualTo(*c));
    }
    return 0;
}
