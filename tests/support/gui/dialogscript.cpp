#include "support/gui/dialogscript.h"

#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace
{
constexpr int pollInterval = 5;                        // milliseconds
constexpr int patienceTicks = patience / pollInterval; // until an answered dialog counts as stuck

QString plainName(const QAbstractButton* button)
{
    return button != nullptr ? button->text().remove('&') : QString();
}

QAbstractButton* buttonNamed(const QMessageBox& box, const QString& name)
{
    const QList<QAbstractButton*> buttons = box.buttons();
    const auto found =
        std::find_if(buttons.cbegin(), buttons.cend(),
                     [&name](const QAbstractButton* button) { return plainName(button) == name; });
    return found != buttons.cend() ? *found : nullptr;
}

QString effectiveDefaultButton(const QMessageBox& box)
{
    const QList<QPushButton*> buttons = box.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons) {
        if (button->isDefault()) {
            return plainName(button);
        }
    }
    return {};
}

QStringList sortedNames(const QMessageBox& box)
{
    QStringList names;
    const QList<QAbstractButton*> buttons = box.buttons();
    for (const QAbstractButton* button : buttons) {
        names.append(plainName(button));
    }
    names.sort();
    return names;
}

void answerMessageBox(QWidget& dialog, const DialogScript::Look& look, const QString& press)
{
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    if (box == nullptr) {
        ADD_FAILURE() << "not a message box: " << dialog.metaObject()->className() << " \""
                      << dialog.windowTitle() << "\"";
        return;
    }
    if (look) {
        look(*box);
    }
    if (press == DialogScript::closeControl) {
        box->close();
        return;
    }
    QAbstractButton* button = buttonNamed(*box, press);
    if (button == nullptr) {
        ADD_FAILURE() << "no button \"" << press << "\"";
        return;
    }
    clickOn(button);
}

QStringList filtersOf(const QString& format)
{
    return {format + " files (*." + format.toLower() + ")", "Any files (*.*)"};
}

void answerFileDialog(QWidget& widget, const QString& caption, const QStringList& nameFilters,
                      const QString& directory, const QString& typeName)
{
    auto* dialog = qobject_cast<QFileDialog*>(&widget);
    if (dialog == nullptr) {
        ADD_FAILURE() << "not a file dialog: " << widget.metaObject()->className() << " \""
                      << widget.windowTitle() << "\"";
        return;
    }
    EXPECT_EQ(dialog->windowTitle(), caption);
    EXPECT_EQ(dialog->nameFilters(), nameFilters);
    EXPECT_EQ(dialog->directory().canonicalPath(), QDir(directory).canonicalPath());
    if (typeName.isEmpty()) {
        dialog->reject();
        return;
    }
    auto* nameField = dialog->findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(nameField, nullptr);
    typeOver(nameField, typeName);
    QTest::keyClick(nameField, Qt::Key_Return);
}
} // namespace

const QString DialogScript::closeControl = QStringLiteral("(close control)");

DialogScript::DialogScript()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (widget->isModal() && widget->isVisible()) {
            seen.push_back({widget, widget->windowTitle(), -1});
        }
    }
    armTimer();
}

DialogScript::~DialogScript()
{
    if (!finished) {
        finish();
    }
}

DialogScript& DialogScript::expectMessageBox(const QString& title, const QString& text,
                                             const QStringList& buttons,
                                             const QString& defaultButton, const QString& press)
{
    const auto look = [=](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), title);
        EXPECT_EQ(box.text(), text);
        QStringList expected = buttons;
        expected.sort();
        EXPECT_EQ(sortedNames(box), expected) << title;
        EXPECT_EQ(effectiveDefaultButton(box), defaultButton) << title;
        EXPECT_TRUE(box.isModal());
    };
    add(title, [=](QWidget& dialog) { answerMessageBox(dialog, look, press); });
    return *this;
}

DialogScript& DialogScript::expectMessage(const QString& title, const QString& text)
{
    return expectMessageBox(title, text, {"OK"}, "OK", "OK");
}

DialogScript& DialogScript::expectQuestion(const QString& title, const QString& text,
                                           const QString& press)
{
    return expectMessageBox(title, text, {"Yes", "No"}, "No", press);
}

DialogScript& DialogScript::expectFileDialog(const QString& caption, const QStringList& nameFilters,
                                             const QString& directory, const QString& typeName)
{
    add(caption, [=](QWidget& dialog) {
        answerFileDialog(dialog, caption, nameFilters, directory, typeName);
    });
    return *this;
}

DialogScript& DialogScript::thenPress(const QString& button, const Look& look)
{
    add("(any message)", [=](QWidget& dialog) { answerMessageBox(dialog, look, button); });
    return *this;
}

DialogScript& DialogScript::thenDo(Interaction interaction)
{
    add("(any dialog)", std::move(interaction));
    return *this;
}

DialogScript& DialogScript::expectExportDialog(const QString& format, const QString& directory,
                                               const QString& typeName)
{
    return expectFileDialog("Select " + format + " File to Export Profiles", filtersOf(format),
                            directory, typeName);
}

DialogScript& DialogScript::expectImportDialog(const QString& format, const QString& directory,
                                               const QString& typeName)
{
    return expectFileDialog("Select " + format + " File to Import Profiles", filtersOf(format),
                            directory, typeName);
}

DialogScript& DialogScript::expectExported(const QString& format)
{
    return expectMessage("Export to " + format + " status",
                         "The profiles have been successfully exported!");
}

DialogScript& DialogScript::expectAppendQuestion(const QString& press)
{
    return expectMessageBox("Add Profiles to List?",
                            "Do you want to add the imported profiles to the current list of "
                            "profiles, or replace them?<br>",
                            {"Add Profiles", "Replace Profiles"}, "Add Profiles", press);
}

DialogScript& DialogScript::expectNoBackupQuestion(const QString& press)
{
    return expectQuestion(
        "Replace Without Backup?",
        "The current profiles could not be saved to the file backup_before_replace.xml before they "
        "are replaced. If you continue, they will be lost. Do you want to replace them anyway?",
        press);
}

DialogScript& DialogScript::expectGlobalSettingsQuestion(const QString& press)
{
    return expectQuestion(
        "Import Global Settings?",
        "The global settings in the file you chose are different than the ones you currently "
        "have. Do you want to overwrite the existing settings?",
        press);
}

DialogScript& DialogScript::expectImportChanges(const QStringList& changes)
{
    return expectMessage("Imported With Changes",
                         "What was imported does not match the settings of the Kelvaron Bundle "
                         "in use:\n\n"
                             + changes.join('\n')
                             + "\n\nPlease check this before you write to the Kelvaron.");
}

DialogScript& DialogScript::expectHexImportError(const QString& suffix)
{
    return expectMessage("Import from HEX status",
                         "An error occured while importing profiles from HEX. Please try again."
                             + suffix);
}

DialogScript& DialogScript::expectTransferFailure()
{
    return expectMessage("Failed!", "Please make sure to select the correct COM port, and that the "
                                    "Kelvaron is in bootloader mode, and try again.");
}

DialogScript& DialogScript::expectResetQuestion(const QString& press,
                                                const std::function<void()>& look)
{
    const QString title = "Stay in Bootloader Mode or Reset?";
    add(title, [=](QWidget& question) {
        EXPECT_EQ(question.windowTitle(), title);
        if (look) {
            look();
        }
        clickOn(buttonWithText(question, press));
    });
    return *this;
}

void DialogScript::add(const QString& name, Interaction interaction)
{
    steps.push_back({name, std::move(interaction)});
}

void DialogScript::armTimer()
{
    // A new timer each time: one whose handler still runs does not fire in a nested event loop.
    QTimer::singleShot(pollInterval, this, &DialogScript::poll);
}

void DialogScript::poll()
{
    if (finished) {
        return;
    }
    armTimer();
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible()) {
        return;
    }
    Seen* known = find(dialog);
    if (known == nullptr) {
        play(*dialog);
    } else if (known->ticksOpen >= 0 && ++known->ticksOpen > patienceTicks) {
        ADD_FAILURE() << "the dialog \"" << known->name << "\" was answered but stayed open";
        known->ticksOpen = -1;
        forceClosed(*dialog);
    }
}

void DialogScript::play(QWidget& dialog)
{
    seen.push_back({&dialog, dialog.windowTitle(), 0});
    if (steps.empty()) {
        const auto* box = qobject_cast<QMessageBox*>(&dialog);
        ADD_FAILURE() << "unexpected dialog \"" << dialog.windowTitle() << "\" "
                      << (box != nullptr ? box->text() : QString());
        forceClosed(dialog);
        return;
    }
    const Step step = steps.front();
    steps.pop_front();
    step.interaction(dialog);
}

DialogScript::Seen* DialogScript::find(const QWidget* dialog)
{
    const auto found = std::find_if(seen.begin(), seen.end(),
                                    [dialog](const Seen& entry) { return entry.dialog == dialog; });
    return found != seen.end() ? &*found : nullptr;
}

void DialogScript::forceClosed(QWidget& dialog)
{
    if (auto* asDialog = qobject_cast<QDialog*>(&dialog)) {
        asDialog->reject();
    } else {
        dialog.close();
    }
}

bool DialogScript::isPlayed() const
{
    return steps.empty() && std::none_of(seen.begin(), seen.end(), [](const Seen& entry) {
               return entry.ticksOpen >= 0 && entry.dialog != nullptr && entry.dialog->isVisible();
           });
}

void DialogScript::finish()
{
    finished = true;
    for (const Step& step : steps) {
        ADD_FAILURE() << "the dialog \"" << step.name << "\" never appeared";
    }
    steps.clear();
    for (const Seen& entry : seen) {
        if (entry.ticksOpen >= 0 && entry.dialog != nullptr && entry.dialog->isVisible()) {
            ADD_FAILURE() << "the dialog \"" << entry.name << "\" is still open";
            forceClosed(*entry.dialog);
        }
    }
}
