#pragma once

#include "support/printing.h"

#include <QObject>

class QAction;
class QLineEdit;
class QPushButton;
class QWidget;

/// Clicks with the left mouse button in the middle of a widget (a check box: on its box). Fails the
/// test when the user could not do that because it is hidden or disabled.
void clickOn(QWidget* widget);

/// Types a text character by character into the widget that Qt considers focused.
void typeText(QWidget* widget, const QString& text);

/// Gives the field the keyboard focus, selects its text and types over it. Nothing is committed.
void typeOver(QLineEdit* field, const QString& text);

/// typeOver() and then the Tab key, which leaves the field.
void enterText(QLineEdit* field, const QString& text);

/// Triggers a command; fails the test when it is disabled.
void trigger(QAction* action);

/// The descendant of this class and object name; fails the test when there is none.
template <typename T>
T* childNamed(const QObject* root, const QString& name)
{
    T* found = root->findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name;
    return found;
}

/// The button with this text below a widget; fails the test when there is none.
QPushButton* buttonWithText(const QWidget& root, const QString& text);

/// Deletes the objects scheduled for deletion.
void flushDeletions();

/// Closes any remaining top-level widget and fails the test.
void expectNoWindowLeft();
