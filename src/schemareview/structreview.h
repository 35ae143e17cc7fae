#pragma once

#include "schemareview/reviewedstruct.h"

#include <optional>

namespace HParser
{
/// Looks at one struct of the schema header: its lines, one by one, and what they make together.
class StructReview
{
public:
    /// Problems are appended to `problems`. The struct's header stands at `headerLine`.
    StructReview(int headerLine, const QString& structName, bool isGlobal, Problems& problems);

    void addMember(const QString& lineText, int lineNumber)
    {
        structure.addMember(lineText, lineNumber);
    }

    /// Looks at the members together. Called once, after the last one.
    void finish();

    int line() const { return structure.line(); }
    QString name() const { return structure.name(); }
    bool isGlobal() const { return structure.isGlobal(); }

    /// Bytes of the profile image that one such struct takes; nothing when it cannot be told.
    std::optional<int> imageSize() const { return size; }

    /// The number that tells the struct in an image; nothing when it has none.
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
