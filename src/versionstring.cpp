#include "versionstring.h"

#include "base/fatalassertion.h"
#include "base/standardoutput.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
QString withoutLeadingZeros(const QString& digits)
{
    int zeros = 0;
    while (zeros < digits.size() - 1 && digits.at(zeros) == QLatin1Char('0')) {
        ++zeros;
    }
    return digits.mid(zeros);
}
} // namespace

VersionString::VersionString(const QString& text) : versionString(text)
{
    compileVersionString();
}

bool VersionString::isDottedVersion(const QString& text)
{
    // Possessive: the matcher remembers no way back, of which a long text has too many.
    static const QRegularExpression dottedVersion(QStringLiteral("\\A(?:[0-9]++\\.)*+[0-9]++\\z"));
    return dottedVersion.match(text).hasMatch();
}

void VersionString::compileVersionString()
{
    KELVARON_ASSERT_TEXT(isDottedVersion(versionString),
                         R"(this->versionString.contains(QRegExp("^(\\d+\\.)*\\d+$")))");
    const QStringList parts = versionString.split(QLatin1Char('.'));
    for (const QString& part : parts) {
        versionNumbers.append(withoutLeadingZeros(part));
    }
}

int VersionString::compare(const VersionString& other) const
{
    const int commonLength = std::min(versionNumbers.size(), other.versionNumbers.size());
    for (int i = 0; i < commonLength; ++i) {
        const QString& own = versionNumbers.at(i);
        const QString& others = other.versionNumbers.at(i);
        if (own != others) {
            const bool isLess = own.size() != others.size()
                                    ? own.size() < others.size() // fewer digits
                                    : own < others;
            return isLess ? -1 : 1;
        }
    }
    if (versionNumbers.size() == other.versionNumbers.size()) {
        return 0;
    }
    return versionNumbers.size() < other.versionNumbers.size() ? -1 : 1;
}

void VersionString::print() const
{
    printLine(QStringLiteral("Version: ") + versionString);
}

void VersionString::runTests()
{
    const auto version = [](const char* text) { return VersionString(QString::fromLatin1(text)); };
    struct Pair
    {
        const char* lesser;
        const char* greater;
    };
    static constexpr Pair ascending[] = {{"1.2.0", "1.2.3"},   {"1.1.2", "1.2.3"},
                                         {"1.5.2", "1.5.2.5"}, {"45", "66"},
                                         {"1.9", "1.10"},      {"1.2", "1.2.0"},
                                         {"1.02", "1.3"},      {"1.99999999999", "1.100000000000"}};
    for (const char* same : {"1.2.3", "10"}) {
        KELVARON_ASSERT(version(same).equalTo(version(same)));
    }
    KELVARON_ASSERT(version("1.02").equalTo(version("1.2")));
    for (const Pair& pair : ascending) {
        KELVARON_ASSERT(version(pair.lesser).lessThan(version(pair.greater)));
        KELVARON_ASSERT(version(pair.greater).greaterThan(version(pair.lesser)));
        KELVARON_ASSERT(!version(pair.lesser).equalTo(version(pair.greater)));
    }
    for (const char* malformed : {"v1.2", "1..2", "1.2.", ""}) {
        KELVARON_ASSERT(!isDottedVersion(QString::fromLatin1(malformed)));
    }
}
