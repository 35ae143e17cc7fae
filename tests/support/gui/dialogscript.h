#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <deque>
#include <functional>
#include <vector>

/// What the next modal dialogs must be and how they are answered, read from top to bottom:
///
///     DialogScript script;
///     script.expectMessageBox("Deleting Profile", "Do you ...?", {"Yes", "No"}, "No", "Yes");
///     clickOn(deleteButton);
///     script.finish();
///
/// It finds new dialogs from within their own event loops. The test fails if a dialog of the script
/// never appears, if one that is not in the script appears (it is closed then), or if an answered
/// one stays open.
class DialogScript : public QObject
{
public:
    using Interaction = std::function<void(QWidget&)>;
    using Look = std::function<void(QMessageBox&)>;

    /// The answer that uses the window's close control instead of a button.
    static const QString closeControl;

    /// Dialogs that are open already are left alone.
    DialogScript();
    ~DialogScript() override;

    /// A QMessageBox; button names have no mnemonic marks. The default button is the one that the
    /// Return key presses.
    DialogScript& expectMessageBox(const QString& title, const QString& text,
                                   const QStringList& buttons, const QString& defaultButton,
                                   const QString& press);

    /// A QMessageBox with only an OK button, which is pressed.
    DialogScript& expectMessage(const QString& title, const QString& text);

    /// A QMessageBox with Yes and No, No the default.
    DialogScript& expectQuestion(const QString& title, const QString& text, const QString& press);

    /// A QFileDialog; an empty name cancels it, another is typed and accepted.
    DialogScript& expectFileDialog(const QString& caption, const QStringList& nameFilters,
                                   const QString& directory, const QString& typeName);

    /// A QMessageBox, in which this button is pressed after `look` has looked at it.
    DialogScript& thenPress(const QString& button, const Look& look = {});

    /// Any dialog; the interaction has to close it.
    DialogScript& thenDo(Interaction interaction);

    // The editor's own dialogs. A format is "XML" or "HEX".

    /// The file dialog of an export or an import; see expectFileDialog().
    DialogScript& expectExportDialog(const QString& format, const QString& directory,
                                     const QString& typeName);
    DialogScript& expectImportDialog(const QString& format, const QString& directory,
                                     const QString& typeName);

    /// The message after an export.
    DialogScript& expectExported(const QString& format);

    /// Whether imported profiles are added or replace the list.
    DialogScript& expectAppendQuestion(const QString& press);

    /// Whether the list is replaced although it could not be saved first.
    DialogScript& expectNoBackupQuestion(const QString& press);

    /// Whether the global settings of a file are taken over.
    DialogScript& expectGlobalSettingsQuestion(const QString& press);

    /// The message after an import that did not match the schema, with these lines.
    DialogScript& expectImportChanges(const QStringList& changes);

    /// An error of a HEX import, with the text that follows the common one.
    DialogScript& expectHexImportError(const QString& suffix);

    /// The error of a transfer.
    DialogScript& expectTransferFailure();

    /// What the Kelvaron does after a transfer or a flash.
    DialogScript& expectResetQuestion(const QString& press = "Stay in Bootloader Mode",
                                      const std::function<void()>& look = {});

    /// Returns whether every dialog of the script has appeared, been answered and closed.
    bool isPlayed() const;

    /// Checks that the whole script was played. The destructor does this if a test does not.
    void finish();

private:
    struct Step
    {
        QString name;
        Interaction interaction;
    };
    struct Seen
    {
        QPointer<QWidget> dialog;
        QString name;
        int ticksOpen = 0; ///< since it was answered, while no newer dialog was in front of it
    };

    void add(const QString& name, Interaction interaction);
    void poll();
    void armTimer();
    void play(QWidget& dialog);
    Seen* find(const QWidget* dialog);
    static void forceClosed(QWidget& dialog);

    std::deque<Step> steps;
    std::vector<Seen> seen;
    bool finished = false;
};
