#pragma once

#include "CBGenerator/structsetting.h"

#include <QStringList>
#include <QVector>

namespace HParser
{
/// The meaning of a field of a member line.
enum class MemberField
{
    Kind,
    Size,
    LowerBound,
    UpperBound,
    ScaleFactor, ///< after one marker character
    Decimals,
    Name,
    Units,
    Category,
    Default,
    Place,
    Items, ///< none or several
    Level
};

/// The fields of a member line in the schema header, for each kind of setting.
struct MemberFields
{
    StructSetting::SettingType type;
    QString keyword;            ///< the field that names the kind
    QVector<MemberField> order; ///< the fields in the order of the line
    QString form;               ///< the same in words, for advice

    /// Returns the fields of all kinds: num, bool, string and list.
    static const QVector<MemberFields>& all();

    /// Returns the keywords of all kinds.
    static QStringList keywords();

    /// Returns the fields of the kind with exactly this keyword; nullptr if there is none.
    static const MemberFields* of(const QString& keyword);

    /// Returns the smallest number of fields of such a line.
    int fewest() const { return hasItems() ? order.size() - 1 : order.size(); }

    /// Returns true if there may be more: the items of a list.
    bool hasItems() const { return type == StructSetting::LIST; }

    /// Returns the index of a field in a line of `count` fields, or of the first item; -1 if such lines
    /// do not have the field.
    int indexOf(MemberField field, int count) const;
};
} // namespace HParser
