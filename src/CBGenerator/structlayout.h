#pragma once

#include <QList>
#include <QStringList>

#include <optional>

namespace HParser
{
class StructSetting;
class StructSettings;

/// How the members of a struct lie in the charger's memory: as C types of the charger, or as bit
/// fields, which make whole bytes together.
class StructLayout
{
public:
    /// What keeps a member from being stored.
    enum class Fault
    {
        None,
        UnknownKind,
        UnknownType, ///< of a number
        NoWidth,     ///< the size is neither "auto" nor a number of bits
        TextOfBits,
        TooWide ///< for the type
    };

    /// Bit fields side by side that make no whole bytes.
    struct BrokenRun
    {
        int first = 0; ///< the index of the first member
        int end = 0;   ///< of the member behind the last one
        int bits = 0;
    };

    StructLayout() = delete;

    /// Bytes of a C type on the charger, whose int has two; 0 for an unknown text.
    static int byteCount(const QString& dataType);

    /// The C types of the charger.
    static QStringList dataTypes();

    /// The widest bit field that a member of this kind and type can be; 0 for an unknown type.
    static int mostBits(const StructSetting& setting);

    static Fault faultOf(const StructSetting& setting);

    /// Those whose fields have no fault. A checksum takes a byte of its own, whatever its size is.
    static QList<BrokenRun> brokenRuns(const StructSettings& settings);

    /// The bytes of all members; nothing when their bits make no whole bytes.
    static std::optional<qint64> dataBytes(const StructSettings& settings);

    /// True when every member can be stored.
    static bool isSound(const StructSettings& settings);
};
} // namespace HParser
