#pragma once

#include "CBGenerator/headertext.h"
#include "schemareview/problem.h"

#include <memory>
#include <optional>
#include <vector>

namespace HParser
{
class StructReview;

/// Finds all problems of a schema header (see docs/file-formats/schema-header.md).
///
/// A header without a fatal problem can be loaded, and its profiles can be written to an image and read
/// back (see SchemaCheck::isUsable()).
class HeaderReview
{
public:
    /// Returns the problems of a header's text in the order of its lines; the first one has the number
    /// `firstLine`. REQUIRES: a text without carriage returns, as read by TextFile.
    static Problems problems(const QString& text, int firstLine = 1);

private:
    explicit HeaderReview(int firstLineNumber);
    ~HeaderReview();

    void readOutside(const HeaderText::Line& line, bool mayBeAddress);
    void refuseHeader(const HeaderText::Line& line);
    void readStruct(const HeaderText::Struct& structure);
    void checkStartAddress(const std::optional<HeaderText::StartAddress>& address);
    void findMisspeltAddress(const QString& line, int number);
    void finish(const HeaderText& header);
    void checkStructs();
    void checkNames();
    void checkTypes();
    void checkSizes();

    int firstLine;
    Problems found;
    std::vector<std::unique_ptr<StructReview>> structs;
    Problem misspeltAddress; ///< none if its line is 0
    int meantGlobal = -1;    ///< index of the problem of a line that should open a global struct
    int meantChemistry = -1; ///< the same for a chemistry
};
} // namespace HParser
