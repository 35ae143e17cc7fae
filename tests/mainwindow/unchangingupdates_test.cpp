// Answers to "Check for new Firmware..." that change nothing.

#include "support/gui/updatechecktest.h"

class UnchangingAnswerTest : public UpdateCheckTest
{
protected:
    void answerInfo(const QByteArray& document) { server.answer(infoPath, {200, document}); }
};

TEST_F(UnchangingAnswerTest, EqualVersion)
{
    offer("1.9");
    checkUpToDate();
    expectNothingChanged();
    EXPECT_FALSE(server.paths().contains(bundlePath));
}

TEST_F(UnchangingAnswerTest, OlderVersion)
{
    offer("1.8.9");
    checkUpToDate();
    expectNothingChanged();
    EXPECT_FALSE(server.paths().contains(bundlePath));
}

TEST_F(UnchangingAnswerTest, NestedEqualVersion)
{
    answerInfo("<a><b>\n" + information("1.9") + "</b></a>");
    checkUpToDate();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, HugeDocumentWithTheEqualVersion)
{
    answerInfo("<a>" + element("pad", QByteArray(100, 'x')).repeated(9000) + information("1.9")
               + "</a>");
    checkUpToDate();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, MissingPage)
{
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, RefusedConnection)
{
    server.stop();
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, InformationDroppedInTheMiddle)
{
    const QByteArray document = information("1.10");
    server.answer(infoPath, {200, document, Pace::AT_ONCE, document.size() - 5});
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, BundleDroppedInTheMiddle)
{
    const QByteArray bundle = newerBundle("1.10");
    offer("1.10");
    server.answer(bundlePath, {200, bundle, Pace::AT_ONCE, bundle.size() / 2});
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, MissingBundle)
{
    offer("1.10");
    checkWithError();
    expectNothingChanged();
    EXPECT_TRUE(contains(server.paths(), bundlePath));
}

TEST_F(UnchangingAnswerTest, MissingLink)
{
    answerInfo(element("current_version", "1.10"));
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, HtmlInsteadOfXml)
{
    answerInfo("<!DOCTYPE html><html><body><h1>Log in, please</h1><br></body></html>");
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, EmptyDocument)
{
    answerInfo("");
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, VersionThatIsAPath)
{
    offer("../v1.10");
    checkWithError();
    expectNothingChanged();
    EXPECT_FALSE(server.paths().contains(bundlePath));
}
