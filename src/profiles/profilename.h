#pragma once

#include <QString>
#include <QWidget>

#include <memory>

class ProfileNameListWidget;
class ProfileSettings;

namespace HParser
{
class StructSetting;
}
namespace Ui
{
class ProfileName;
}

/// One row of the profile list: title, subtitle, active light, default mark and delete cross.
///
/// The row shows and stores what the list manager decides; a click only asks for a change.
class ProfileName : public QWidget
{
    Q_OBJECT

public:
    /// When a row gets its labels and buttons. Most rows of a long list are never seen, and
    /// creating their widgets would take most of the time of loading it.
    enum class FormTime
    {
        NOW,
        WHEN_SEEN ///< by makeForm(), or when the row is highlighted
    };

    /// `item` carries this row and is not owned.
    ProfileName(ProfileNameListWidget* item, QWidget* parent, FormTime formTime = FormTime::NOW);
    ~ProfileName() override;

    /// Creates the labels and buttons if they do not exist yet.
    void makeForm();

    void setTitle(const QString& title);
    void setSubtitle(const QString& subtitle);
    QString getTitle() const { return title; }
    QString getSubtitle() const { return subtitle; }

    /// Shows this profile, which the list manager owns, and clears its active and default flags.
    void setProfileSettings(ProfileSettings* settings);
    ProfileSettings* getProfileSettings() const { return profileSettings; }

    /// Clears the pointer to the profile; for a row that was taken out of the list.
    void forgetProfile();

    /// Show a flag and store it in the profile's settings.
    void setActive(bool active);
    void setDefault(bool isDefault);

    bool getActiveStatus() const;
    bool getDefaultStatus() const;

    /// Sets the look of the selected row, or resets it. The Tab key stops only at the buttons of
    /// the selected row; otherwise a long list would be hard to leave.
    void highlight();
    void dehighlight();
    bool isHighlighted() const { return highlighted; }

    /// True for the selected row while the list has the keyboard focus.
    bool hasListFocus() const;

    /// Returns the row's texts and flags in one line.
    QString describe() const;

    /// Returns "Chemistry: " with its name; empty without a profile.
    QString describeChemistry() const;

    /// Places this row's buttons between these two widgets in the tab order.
    void placeInTabOrder(QWidget* before, QWidget* after);

    /// Returns the item that carries this row; nullptr once the item has been deleted, until the event
    /// loop deletes the row.
    ProfileNameListWidget* getListItem() const { return listItem; }

    /// Called by the item when it is deleted.
    void forgetListItem() { listItem = nullptr; }

    /// Handle a click on the light, the mark or the cross by requesting the change.
    void requestActiveChange();
    void requestDefaultChange();
    void requestDeletion();

signals:
    void activeStatusChangeRequest(ProfileName* row, bool active);
    void defaultStatusChangeRequest(ProfileName* row, bool isDefault);
    void deleteMeSignal(ProfileName* row);

protected:
    bool event(QEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showTexts();
    void showActive();
    void showDefault();
    void activeFalseInit();
    void defaultFalseInit();
    void showHighlight();
    QString activeText() const;
    void showCross(bool alert);
    void fitTexts();
    void setTextsItalic(bool italic);
    void setButtonsFocusPolicy(Qt::FocusPolicy policy);

    std::unique_ptr<Ui::ProfileName> ui; ///< null until the row is seen
    QString title = QStringLiteral("Title");
    QString subtitle = QStringLiteral("Subtitle");
    ProfileNameListWidget* listItem = nullptr;
    ProfileSettings* profileSettings = nullptr;
    HParser::StructSetting* activeSetting = nullptr;  ///< a member of the profile's settings
    HParser::StructSetting* defaultSetting = nullptr; ///< a member of the profile's settings
    bool highlighted = false;
    bool isCrossAlert = false;
};
