#pragma once

#include "profiles/profilesettings.h"

#include <QObject>

class QWidget;

namespace HParser
{
class Generator;
}

/// Owns the application's one copy of the charger's global settings and opens the dialog that edits
/// it.
class GlobalSettingsManager : public QObject
{
    Q_OBJECT

public:
    /// `dialogParent` is the main window; the generator is borrowed.
    GlobalSettingsManager(QWidget* dialogParent, HParser::Generator* settingsGenerator,
                          QObject* parent);

    /// Creates the block again from another schema, with its default values.
    void setAllSettings(HParser::Generator* newGenerator);

public slots:
    void on_editGlobalSettingsClicked();

signals:
    /// The block was replaced; whatever shows the old one has to show the new one.
    void settingsReplaced();

private:
    QWidget* parentWidget;
    ProfileSettings globalSettings;
    HParser::Generator* generator;
};
