#include "CBGenerator/memberfields.h"

namespace HParser
{
const QVector<MemberFields>& MemberFields::all()
{
    using F = MemberField;
    static const QVector<F> plain{F::Kind,    F::Size,  F::Name, F::Category,
                                  F::Default, F::Place, F::Level};
    static const QVector<MemberFields> kinds{
        {StructSetting::NUM,
         QStringLiteral("num"),
         {F::Kind, F::Size, F::LowerBound, F::UpperBound, F::ScaleFactor, F::Decimals, F::Name,
          F::Units, F::Category, F::Default, F::Place, F::Level},
         QStringLiteral("num, size, lower bound, upper bound, xscale, decimals, \"name\", "
                        "\"units\", category, default, place, level")},
        {StructSetting::BOOL, QStringLiteral("bool"), plain,
         QStringLiteral("bool, size, \"name\", category, default, place, level")},
        {StructSetting::STRING, QStringLiteral("string"), plain,
         QStringLiteral("string, auto, \"name\", category, \"default\", place, level")},
        {StructSetting::LIST,
         QStringLiteral("list"),
         {F::Kind, F::Size, F::Name, F::Category, F::Default, F::Place, F::Items, F::Level},
         QStringLiteral("list, auto, \"name\", category, \"default\", place, \"item\", "
                        "\"item\", level")}};
    return kinds;
}

QStringList MemberFields::keywords()
{
    QStringList words;
    for (const MemberFields& kind : all()) {
        words.append(kind.keyword);
    }
    return words;
}

const MemberFields* MemberFields::of(const QString& keyword)
{
    for (const MemberFields& kind : all()) {
        if (kind.keyword == keyword) {
            return &kind;
        }
    }
    return nullptr;
}

int MemberFields::indexOf(MemberField field, int count) const
{
    return hasItems() && field == MemberField::Level ? count - 1 : order.indexOf(field);
}
} // namespace HParser
