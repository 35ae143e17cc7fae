// The parsers and the reviews agree: after any small damage to a valid header or bundle, the review finds a
// fatal problem where the parser finds a fault, and otherwise calls only those lines fatal that are not read
// as they were meant.

#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "CBGenerator/schemafault.h"
#include "KelvaronBundle/bundlecheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "base/linecapture.h"
#include "base/textfile.h"
#include "schemareview/bundlereview.h"
#include "support/bundletext.h"
#include "support/reviewedheader.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

using HParser::Generator;
using HParser::HeaderReview;
using HParser::SchemaCheck;
using HParser::SchemaFault;

namespace
{
/// Returns the text with one character left out or replaced, for each of its characters.
QStringList damaged(const QString& text)
{
    QStringList texts;
    for (int i = 0; i < text.size(); ++i) {
        for (const char* other : {"", ",", "\"", "\n"}) {
            texts.append(text.left(i) + other + text.mid(i + 1));
        }
    }
    return texts;
}

Problems fatalAmong(const Problems& problems)
{
    Problems fatal;
    for (const Problem& problem : problems) {
        if (problem.severity == Problem::Severity::Fatal) {
            fatal.append(problem);
        }
    }
    return fatal;
}

/// Returns true for a line that the parser reads, but not as it was meant: values are mixed up.
bool isOnlyMisread(const Problem& problem)
{
    static const QRegularExpression misread(
        "a comma splits|a field before the items is missing|the first character of a scale factor");
    return problem.text.contains(misread);
}
} // namespace

TEST(ParserAgreementTest, ADamagedHeaderIsFatalWhereItCannotBeUsed)
{
    const LineCapture traces;
    int refused = 0;
    int usable = 0;
    for (const QString& header : damaged(ReviewedHeader::soundHeader.join('\n') + '\n')) {
        const Problems fatal = fatalAmong(HeaderReview::problems(header));
        QSet<int> lines;
        bool isWorse = false; // than misread
        for (const Problem& problem : fatal) {
            lines.insert(problem.line);
            isWorse = isWorse || !isOnlyMisread(problem);
        }
        const QList<SchemaFault> faults = Generator(nullptr).parse(header);
        for (const SchemaFault& fault : faults) {
            EXPECT_TRUE(fault.line == 0 ? !lines.isEmpty() : lines.contains(fault.line))
                << fault.condition << " in line " << fault.line << " of\n"
                << qPrintable(header);
        }
        const bool isUsable = SchemaCheck::isUsable(header);
        EXPECT_TRUE(isUsable || !fatal.isEmpty()) << qPrintable(header);
        EXPECT_FALSE(isUsable && isWorse) << qPrintable(fatal.first().text) << " in\n"
                                          << qPrintable(header);
        (faults.isEmpty() ? usable : refused) += 1;
    }
    EXPECT_GT(refused, 500); // both answers occur
    EXPECT_GT(usable, 1000);
}

TEST(ParserAgreementTest, DamagedBundlesAreRefusedByBoth)
{
    const LineCapture traces;
    const QTemporaryDir folder;
    const QString path = folder.filePath("b.kelvaron");
    const QByteArray sound = BundleText()
                                 .key("VERSION", "1.2")
                                 .key("MIN_SOFTWARE_VERSION_REQUIRED", "0.9")
                                 .section("device\n")
                                 .section("schema\n")
                                 .bytes();
    int unsafe = 0;
    int broken = 0;
    for (const QString& text : damaged(QString::fromUtf8(sound))) {
        ASSERT_TRUE(TextFile::write(path, text));
        const Problems keys = fatalAmong(BundleReview::keyProblems(text, "b.kelvaron"));
        EXPECT_EQ(BundleCheck::isSafe(path), keys.isEmpty()) << qPrintable(text);
        const Problems sections = BundleReview::sectionProblems(text);
        EXPECT_EQ(KelvaronBundle(path).parseBundle(), sections.isEmpty()) << qPrintable(text);
        unsafe += keys.isEmpty() ? 0 : 1;
        broken += sections.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(unsafe, 100);
    EXPECT_GT(broken, 100);
}
