#include "support/gui/dialogscript.h"

#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
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

void answerMessageBox(QWidget& dialog, const QString& title, const QString& text,
                      QStringList buttons, const QString& defaultButton, const QString& press)
{
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    if (box == nullptr) {
        ADD_FAILURE() << "not a message box: " << dialog.metaObject()->className() << " \""
                      << qPrintable(dialog.windowTitle()) << "\"";
        return;
    }
    EXPECT_EQ(box->windowTitle(), title);
    EXPECT_EQ(box->text(), text);
    buttons.sort();
    EXPECT_EQ(sortedNames(*box), buttons) << qPrintable(title);
    EXPECT_EQ(effectiveDefaultButton(*box), defaultButton) << qPrintable(title);
    EXPECT_TRUE(box->isModal());
    if (press == DialogScript::closeControl) {
        box->close();
        return;
    }
    QAbstractButton* button = buttonNamed(*box, press);
    if (button == nullptr) {
        ADD_FAILURE() << "no button \"" << qPrintable(press) << "\"";
        return;
    }
    clickOn(button);
}

void answerFileDialog(QWidget& widget, const QString& caption, const QStringList& nameFilters,
                      const QString& directory, const QString& typeName)
{
    auto* dialog = qobject_cast<QFileDialog*>(&widget);
    if (dialog == nullptr) {
        ADD_FAILURE() << "not a file dialog: " << widget.metaObject()->className() << " \""
                      << qPrintable(widget.windowTitle()) << "\"";
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
    add(title, [=](QWidget& dialog) {
        answerMessageBox(dialog, title, text, buttons, defaultButton, press);
    });
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

DialogScript& DialogScript::thenDo(Interaction interaction)
{
    add("(any dialog)", std::move(interaction));
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
        ADD_FAILURE() << "the dialog \"" << qPrintable(known->name)
                      << "\" was answered but stayed open";
        known->ticksOpen = -1;
        forceClosed(*dialog);
    }
}

void DialogScript::play(QWidget& dialog)
{
    seen.push_back({&dialog, dialog.windowTitle(), 0});
    if (steps.empty()) {
        const auto* box = qobject_cast<QMessageBox*>(&dialog);
        ADD_FAILURE() << "unexpected dialog \"" << qPrintable(dialog.windowTitle()) << "\" "
                      << (box != nullptr ? qPrintable(box->text()) : "");
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
        ADD_FAILURE() << "the dialog \"" << qPrintable(step.name) << "\" never appeared";
    }
    steps.clear();
    for (const Seen& entry : seen) {
        if (entry.ticksOpen >= 0 && entry.dialog != nullptr && entry.dialog->isVisible()) {
            ADD_FAILURE() << "the dialog \"" << qPrintable(entry.name) << "\" is still open";
            forceClosed(*entry.dialog);
        }
    }
}
