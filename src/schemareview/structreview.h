#pragma once

#include "schemareview/reviewedstruct.h"

#include <optional>

namespace HParser
{
/// Checks one struct of the schema header: its lines one by one, then as a whole.
class StructReview
{
public:
    /// Problems are appended to `problems`. `headerLine` is the line that opens the struct.
    StructReview(int headerLine, const QString& structName, bool isGlobal, Problems& problems);

    void addMember(const QString& lineText, int lineNumber)
    {
        structure.addMember(lineText, lineNumber);
    }

    /// Checks the struct as a whole. Called once, after the last member.
    void finish();

    int line() const { return structure.line(); }
    QString name() const { return structure.name(); }
    bool isGlobal() const { return structure.isGlobal(); }

    /// Returns the size of such a struct in a profile image, in bytes; nothing if it is not known.
    std::optional<int> imageSize() const { return size; }

    /// Returns the number of the struct in an image; nothing if it has none.
    std::optional<int> type() const { return typeNumber; }
    int typeLine() const;
    int typeColumn() const;

private:
    void checkPlaces();
    void checkBits();

    ReviewedStruct structure;
    std::optional<int> size;
    std::optional<int> typeNumber;
};
} // namespace HParser
