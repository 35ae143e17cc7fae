#pragma once

#include <QCheckBox>
#include <QPointer>

namespace HParser
{
class StructSetting;
}

/// The editor of a boolean setting; a click changes the setting at once.
class SettingsCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit SettingsCheckBox(QWidget* parent = nullptr);

    /// Shows and edits this setting.
    void bindSetting(HParser::StructSetting* boundSetting);

    /// Releases the setting: nothing is shown or stored any more.
    void unbindSetting();

    void saveSetting(bool on);

public slots:
    void on_clicked();

    /// Shows the setting's flag.
    void updateView();

    void on_enableView(bool on);

private:
    QPointer<HParser::StructSetting> setting; ///< not owned
};
