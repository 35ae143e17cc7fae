#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <ostream>

// How GoogleTest prints Qt's texts: the values of an expectation in quotes, a message as it is.
// Every test that compares such texts includes this, so that one program prints them in one way.
inline std::ostream& operator<<(std::ostream& stream, const QByteArray& bytes)
{
    return stream << bytes.toStdString();
}
inline std::ostream& operator<<(std::ostream& stream, const QString& text)
{
    return stream << text.toStdString();
}
inline void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    *stream << '"' << bytes << '"';
}
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text << '"';
}
inline void PrintTo(const QStringList& texts, std::ostream* stream)
{
    *stream << "[\"" << texts.join("\", \"") << "\"]";
}

/// Expectations for EXPECT_TRUE and EXPECT_FALSE whose message shows the text or list that was searched.
template <typename Whole, typename Part>
::testing::AssertionResult contains(const Whole& whole, const Part& part)
{
    return (whole.contains(part) ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
           << ::testing::PrintToString(part) << " is searched in "
           << ::testing::PrintToString(whole);
}
template <typename Whole, typename Part>
::testing::AssertionResult startsWith(const Whole& whole, const Part& beginning)
{
    return (whole.startsWith(beginning) ? ::testing::AssertionSuccess()
                                        : ::testing::AssertionFailure())
           << ::testing::PrintToString(beginning) << " is expected at the beginning of "
           << ::testing::PrintToString(whole);
}
