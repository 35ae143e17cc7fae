#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace HParser
{
class StructSetting;

/// One settings struct of the schema: the charger's global settings or one chemistry.
///
/// It keeps its settings in two orders: the original order of the header (the order of the C struct
/// and of every image) and the visual order of the editor, a subset of it. The settings of the
/// original order are its children.
class StructSettings : public QObject
{
    Q_OBJECT

public:
    explicit StructSettings(QObject* parent);

    /// Returns the name shown to the user; for a chemistry, the chemistry's name.
    QString getDescriptiveName() const { return descriptiveName; }
    void setDescriptiveName(const QString& name) { descriptiveName = name; }

    /// Returns true for the charger's global settings, false for a chemistry.
    bool getGlobal() const { return global; }
    void setGlobal(bool isGlobal) { global = isGlobal; }

    /// Visual order.
    QList<StructSetting*> getStructSettings() const { return structSettings; }
    void setStructSettings(const QList<StructSetting*>& settings) { structSettings = settings; }

    /// Header order.
    QList<StructSetting*> getOriginalOrderStructSettings() const
    {
        return originalOrderStructSettings;
    }

    /// Takes ownership of the settings.
    void setOriginalOrderStructSettings(const QList<StructSetting*>& settings);

    /// Returns true once the user has changed advanced settings; they then keep their values.
    bool getAdvancedSettingsEdited() const { return advancedSettingsEdited; }
    void setAdvancedSettingsEdited(bool edited) { advancedSettingsEdited = edited; }

    /// Returns an independent copy without values; call buildFormulaTrees() on it before use.
    std::unique_ptr<StructSettings> deepCopy() const;

    /// Connects the formulas and sets every setting to its default value. Call this once on every
    /// struct that will be edited or evaluated. A formula can only use settings of the visual
    /// order; while the defaults are copied, a value not yet copied counts as 0.
    void buildFormulaTrees();

    /// Returns the first setting in header order with exactly this name; nullptr if there is none.
    StructSetting* getStructSettingByDescriptiveName(const QString& name) const;

    /// Writes the struct to standard output.
    void print() const;

private:
    QString descriptiveName;
    bool global = false;
    QList<StructSetting*> structSettings;
    QList<StructSetting*> originalOrderStructSettings;
    bool advancedSettingsEdited = false;
};
} // namespace HParser
