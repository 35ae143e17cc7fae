#pragma once

#include "CBGenerator/headertext.h"
#include "schemareview/problem.h"

#include <memory>
#include <optional>
#include <vector>

namespace HParser
{
class StructReview;

/// Finds everything that is wrong with a schema header (see docs/file-formats/schema-header.md).
///
/// Where Generator and SchemaCheck end the program at the first fault, this goes on. A header
/// without a fatal problem can be loaded, and its profiles be written to an image and read back.
class HeaderReview
{
public:
    /// The problems of a header's text, in the order of its lines, which are counted from
    /// `firstLine`. REQUIRES: a text without carriage returns (what TextFile reads).
    static Problems problems(const QString& text, int firstLine = 1);

private:
    explicit HeaderReview(int firstLineNumber);
    ~HeaderReview();

    void readOutside(const HeaderText::Line& line, bool mayBeAddress);
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
    Problem misspeltAddress; ///< of line 0: none
    int meantGlobal = -1;    ///< index of the problem of a global struct that is not opened
    int meantChemistry = -1; ///< the same of a chemistry
};
} // namespace HParser
