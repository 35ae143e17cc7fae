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

/// The editor of a number or text setting. What was typed goes into the setting when the field
/// loses focus; the field then shows what the setting made of it, and for a moment beside it why a
/// number was changed. Its tooltip and its description for screen readers say what it takes.
class SettingsLineEdit : public QLineEdit, private QAccessible::ActivationObserver
{
    Q_OBJECT

public:
    explicit SettingsLineEdit(QWidget* parent = nullptr);
    ~SettingsLineEdit() override;

    /// Shows and edits this setting from now on. Numbers are typed with a decimal point or the
    /// decimal separator of the user's locale and shown with a point; texts are limited to what the
    /// charger can hold, in length and characters. A hint says why anything else is refused. An
    /// editor that has shown a number shows numbers only, one that has shown a text shows texts.
    void bindSetting(HParser::StructSetting* boundSetting);

    /// Shows and stores nothing from now on.
    void unbindSetting();

    /// Narrow: the grid gives its editors their width.
    QSize sizeHint() const override;

    /// Stores the text (a text that is not a number counts as 0) and shows the stored value.
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
    StorableTextValidator* textValidator = nullptr; ///< a child, of text settings alone
    bool isRead; ///< by a screen reader, which needs more texts than there is time for otherwise
    bool isTyped = false;      ///< what is shown is not stored yet
    bool isUnfinished = false; ///< what was typed was no number
    QString correction;        ///< of the last number, until it is noted
    QPointer<FieldNote> note;  ///< a child of the window while it is shown
};
