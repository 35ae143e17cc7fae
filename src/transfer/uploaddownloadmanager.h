#pragma once

#include <QObject>

namespace HEXGeneratorParser
{
class HEXManager;
}

namespace UploadDownload
{
/// Moves the profile list between the editor and the charger. This version cannot do it yet: both
/// commands tell so and change nothing.
class UploadDownloadManager : public QObject
{
    Q_OBJECT

public:
    /// `manager` is borrowed. `parent` is the main window.
    UploadDownloadManager(HEXGeneratorParser::HEXManager* manager, QObject* parent);

signals:
    /// The list is to be emptied without a question, before the charger's profiles replace it.
    void deleteAllProfiles();

public slots:
    void on_writeButtonPressed();
    void on_readButtonPressed();

private:
    HEXGeneratorParser::HEXManager* hexManager;
};
} // namespace UploadDownload
