#pragma once

#include <QString>

#include <functional>

/// Fatal assertions: broken invariants and malformed installed files.
///
/// They are on in every build type. A failing one prints `ASSERT: "CONDITION" in file
/// FOLDER/file.cpp, line N` to standard error, writes what the program was working on (see
/// FatalContext) to standard output, runs the registered last step and aborts the process.
namespace FatalAssertion
{
/// What failed and what the program was working on, for the last step.
struct Report
{
    QString assertion;     ///< the line printed on standard error
    QString context;       ///< what the program was working on, innermost last; may be empty
    QString installedFile; ///< the installed file to blame; empty when there is none
};

using LastStep = std::function<void(const Report&)>;

/// Registers what runs once before the process aborts (saving the user's list, a message box).
/// An empty function removes it. A fatal assertion inside the last step aborts at once.
void setLastStep(LastStep lastStep);

/// Ends the process. `file` is the source's path, printed relative to src/.
[[noreturn]] void fail(const char* condition, const char* file, int line);
} // namespace FatalAssertion

/// Ends the process unless `condition` holds; prints the condition as written.
#define KELVARON_ASSERT(condition)                                                                 \
    ((condition) ? static_cast<void>(0) : FatalAssertion::fail(#condition, __FILE__, __LINE__))

/// Like KELVARON_ASSERT, but prints `text` where the code of the condition would not help the
/// reader.
#define KELVARON_ASSERT_TEXT(condition, text)                                                      \
    ((condition) ? static_cast<void>(0) : FatalAssertion::fail(text, __FILE__, __LINE__))

/// Returns the element at `index` of a list; an index out of range is a fatal assertion.
#define KELVARON_AT(container, index)                                                              \
    (FatalAssertion::checkedAt((container), (index), __FILE__, __LINE__))

namespace FatalAssertion
{
template <typename Container>
auto checkedAt(const Container& container, int index, const char* file, int line)
    -> decltype(container.at(index))
{
    if (index < 0 || index >= container.size()) {
        fail("index out of range", file, line);
    }
    return container.at(index);
}
} // namespace FatalAssertion
