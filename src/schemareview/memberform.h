#pragma once

#include <QStringList>

namespace HParser
{
/// What the member lines of the schema header look like, by the kind of the setting.
namespace MemberForm
{
/// "num", "bool", "string" and "list".
QStringList kinds();

/// How many fields such a line has, at least; 0 for what is not a kind.
int numberOfFields(const QString& kind);

/// True when there may be more: the items of a list.
bool mayHaveMore(const QString& kind);

/// The fields in their order, as an advice.
QString form(const QString& kind);
} // namespace MemberForm
} // namespace HParser
