#include "schemareview/memberform.h"

namespace HParser
{
QStringList MemberForm::kinds()
{
    return {QStringLiteral("num"), QStringLiteral("bool"), QStringLiteral("string"),
            QStringLiteral("list")};
}

int MemberForm::numberOfFields(const QString& kind)
{
    constexpr int ofNum = 12;
    constexpr int ofOthers = 7;
    if (!kinds().contains(kind)) {
        return 0;
    }
    return kind == QLatin1String("num") ? ofNum : ofOthers;
}

bool MemberForm::mayHaveMore(const QString& kind)
{
    return kind == QLatin1String("list");
}

QString MemberForm::form(const QString& kind)
{
    if (kind == QLatin1String("num")) {
        return QStringLiteral("num, size, lower bound, upper bound, xscale, decimals, \"name\", "
                              "\"units\", category, default, place, level");
    }
    if (kind == QLatin1String("bool")) {
        return QStringLiteral("bool, size, \"name\", category, default, place, level");
    }
    return kind == QLatin1String("list")
               ? QStringLiteral("list, auto, \"name\", category, \"default\", place, \"item\", "
                                "\"item\", level")
               : QStringLiteral("string, auto, \"name\", category, \"default\", place, level");
}
} // namespace HParser
