#pragma once

#include <QList>
#include <QStringList>

#include <optional>

namespace HParser
{
class StructSetting;
class StructSettings;

/// How the members of a struct are stored in the charger's memory: as C types, or as bit fields that
/// add up to whole bytes.
class StructLayout
{
public:
    /// Why a member cannot be stored.
    enum class Fault
    {
        None,
        UnknownKind,
        UnknownType, ///< of a number
        NoWidth,     ///< the size is neither "auto" nor a number of bits
        TextOfBits,
        TooWide ///< for the type
    };

    /// Consecutive bit fields that do not add up to whole bytes.
    struct BrokenRun
    {
        int first = 0; ///< the index of the first member
        int end = 0;   ///< the index after that of the last one
        int bits = 0;
    };

    StructLayout() = delete;

    /// Returns the size in bytes of a C type on the charger, whose int has two; 0 for an unknown type.
    static int byteCount(const QString& dataType);

    /// Returns the C types of the charger.
    static QStringList dataTypes();

    /// Returns the largest width of a bit field of this kind and type; 0 for an unknown type.
    static int mostBits(const StructSetting& setting);

    /// Returns the first fault of a member.
    static Fault faultOf(const StructSetting& setting);

    /// Returns the broken runs among the fields without a fault. A checksum is always a byte of its own.
    static QList<BrokenRun> brokenRuns(const StructSettings& settings);

    /// Returns the size of all members in bytes; nothing if their bits do not add up to whole bytes.
    static std::optional<qint64> dataBytes(const StructSettings& settings);

    /// Returns true if every member can be stored.
    static bool isSound(const StructSettings& settings);
};
} // namespace HParser
