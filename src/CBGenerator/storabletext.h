#pragma once

#include <QString>
#include <QStringList>

namespace HParser
{
class StructSettings;
}

/// Which texts a profile image holds so that they can be read back. A text's field has a byte for
/// each character: one beyond ASCII takes several bytes, pushes all that follows out of its place
/// and makes the image unreadable. A zero ends a text.
namespace StorableText
{
bool isStorable(QChar character);

/// The characters of a text that an image cannot hold, in their order; empty when it can hold all.
QString unstorable(const QString& text);

/// A line for each text of a profile that an image cannot hold: the setting, the characters and the
/// profile's title.
QStringList complaints(const HParser::StructSettings& profile, const QString& title);
} // namespace StorableText
