#pragma once

#include "CBGenerator/structsetting.h"

#include <QStringList>
#include <QVector>

namespace HParser
{
/// What the fields of a member line hold.
enum class MemberField
{
    Kind,
    Size,
    LowerBound,
    UpperBound,
    ScaleFactor, ///< behind one marker character
    Decimals,
    Name,
    Units,
    Category,
    Default,
    Place,
    Items, ///< none or several
    Level
};

/// The fields of a member line of the schema header, by the kind of the setting.
struct MemberFields
{
    StructSetting::SettingType type;
    QString keyword;            ///< the field that names the kind
    QVector<MemberField> order; ///< of the fields in the line
    QString form; ///< the same in words, with an example where a field has a fixed form

    /// The kinds of settings: num, bool, string and list.
    static const QVector<MemberFields>& all();

    /// Their keywords.
    static QStringList keywords();

    /// The fields of the kind with exactly this keyword; nullptr when there is none.
    static const MemberFields* of(const QString& keyword);

    /// How many fields such a line has, at least.
    int fewest() const { return hasItems() ? order.size() - 1 : order.size(); }

    /// True when there may be more: the items of a list.
    bool hasItems() const { return order.contains(MemberField::Items); }

    /// The index of a field in a line of `count` fields, that of the first item for the items; -1 when
    /// such lines do not have it.
    int indexOf(MemberField field, int count) const;
};
} // namespace HParser
