#include "versionstring.h"

#include "fatalassertion.h"
#include "standardoutput.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <limits>

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
        bool fits = false;
        const int number = part.toInt(&fits);
        versionNumbers.append(fits ? number : std::numeric_limits<int>::max());
    }
}

int VersionString::compare(const VersionString& other) const
{
    const int commonLength = std::min(versionNumbers.size(), other.versionNumbers.size());
    for (int i = 0; i < commonLength; ++i) {
        if (versionNumbers.at(i) != other.versionNumbers.at(i)) {
            return versionNumbers.at(i) < other.versionNumbers.at(i) ? -1 : 1;
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
                                         {"1.9", "1.10"},      {"1.2", "1.2.0"}};
    KELVARON_ASSERT(version("1.2.3").equalTo(version("1.2.3")));
    KELVARON_ASSERT(version("10").equalTo(version("10")));
    for (const Pair& pair : ascending) {
        KELVARON_ASSERT(version(pair.lesser).lessThan(version(pair.greater)));
        KELVARON_ASSERT(version(pair.greater).greaterThan(version(pair.lesser)));
    }
}
