#pragma once

#include <QAccessible>
#include <QLineEdit>
#include <QPointer>

namespace HParser
{
class StructSetting;
}

class FieldNote;
class StorableTextValidator;

/// The editor of a number or text setting. The text is stored in the setting when the field loses
/// the focus; the field then shows the stored value, and for a moment a note explains why a number
/// was changed. The tooltip and the description for screen readers show which values are valid.
class SettingsLineEdit : public QLineEdit, private QAccessible::ActivationObserver
{
    Q_OBJECT

public:
    explicit SettingsLineEdit(QWidget* parent = nullptr);
    ~SettingsLineEdit() override;

    /// Shows and edits this setting. Numbers are typed with a decimal point or the decimal
    /// separator of the user's locale and shown with a point; texts are limited to the length and
    /// the characters that the charger can hold. A hint explains why anything else is refused. An
    /// editor that has shown a number must show only numbers, one that has shown a text only texts.
    void bindSetting(HParser::StructSetting* boundSetting);

    /// Releases the setting: nothing is shown or stored any more.
    void unbindSetting();

    /// Narrow, because the grid sets the width of its editors.
    QSize sizeHint() const override;

    /// Stores the text (0 for a text that is not a number) and shows the stored value.
    void saveSetting();

protected:
    bool event(QEvent* event) override;

public slots:
    void on_editingFinished();

    /// Shows the setting's value; called when a formula has changed it.
    void updateView();

    void on_enableView(bool on);

private:
    void accessibilityActiveChanged(bool active) override;
    void describeForReader();
    QString describeInBrief() const;
    void addValidator();
    void showTextHint(const QString& characters);
    void showNumberHint();
    void showHint(const QString& hint);
    void saveNumber();
    void noteCorrection();
    void removeNote();
    QStringList describe() const;
    bool isTextCut() const;
    void showTip(const QPoint& place);

    QPointer<HParser::StructSetting> setting;       ///< not owned
    StorableTextValidator* textValidator = nullptr; ///< a child; only for text settings
    bool isRead;               ///< a screen reader has asked for the texts, which cost time to keep
    bool isTyped = false;      ///< the text shown is not stored yet
    bool isUnfinished = false; ///< the text typed was not a number
    QString correction;        ///< note about the last number, until it is shown
    QPointer<FieldNote> note;  ///< a child of the window while shown
};
