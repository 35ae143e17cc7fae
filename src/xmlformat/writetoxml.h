#pragma once

#include <QList>
#include <QObject>
#include <QString>

class ProfileName;
class QTextStream;

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

namespace XMLGeneratorParser
{
/// Writes rows of the profile list into a profile file, in UTF-8; ProfileDocument makes its text.
class WriteToXML : public QObject
{
    Q_OBJECT

public:
    explicit WriteToXML(QObject* parent = nullptr);

    /// Writes the file completely or not at all: on failure returns false and leaves an existing
    /// file unchanged.
    bool write(const QString& fileName, const QList<ProfileName*>& profiles,
               const HParser::StructSettings* globalSettings);

    // Kept: part of the interface. Both do what ProfileDocument does.
    static void xmlOutputSettings(QTextStream* stream,
                                  const QList<HParser::StructSetting*>& settings);
    static QString boolToString(bool value);
};
} // namespace XMLGeneratorParser
