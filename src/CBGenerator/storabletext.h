#pragma once

#include <QString>
#include <QStringList>

namespace HParser
{
class StructSettings;
}

/// Checks which texts can be read back from a profile image. A text's field has one byte per
/// character: a character beyond ASCII takes several bytes, displaces everything after it and makes
/// the image unreadable. A zero ends a text.
namespace StorableText
{
bool isStorable(QChar character);

/// Returns the characters of a text that an image cannot hold, in order; empty if it can hold all.
QString unstorable(const QString& text);

/// Returns one line for each text of a profile that an image cannot hold: the setting, the
/// characters and the profile's title.
QStringList complaints(const HParser::StructSettings& profile, const QString& title);
} // namespace StorableText
