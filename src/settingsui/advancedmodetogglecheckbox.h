#pragma once

#include <QCheckBox>
#include <QList>
#include <QPointer>

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

/// Switches advanced mode of all settings of a struct. Switching it off puts advanced numbers back
/// to their defaults.
class AdvancedModeToggleCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit AdvancedModeToggleCheckBox(QWidget* parent = nullptr);

    /// The settings are members of the struct; both are borrowed.
    void bindSettings(const QList<HParser::StructSetting*>& boundSettings,
                      HParser::StructSettings* boundStruct);

    /// Shows the state and passes it to every setting.
    void enableAdvancedMode(bool on);

    /// Disables the editors of all advanced settings.
    void disableAdvancedSettingViews();

public slots:
    void on_clicked();

private:
    QList<HParser::StructSetting*> settings; ///< valid while the struct lives
    QPointer<HParser::StructSettings> structSettings;
};
