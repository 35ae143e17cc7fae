#include "support/gui/widgets.h"

#include "support/waiting.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QVector>

void clickOn(QWidget* widget)
{
    ASSERT_NE(widget, nullptr);
    QCoreApplication::processEvents(); // layouts show their new widgets from the event loop
    const std::string name =
        widget->objectName().toStdString() + " (" + widget->metaObject()->className() + ")";
    ASSERT_TRUE(widget->isVisible()) << name << " is hidden";
    ASSERT_TRUE(widget->isEnabled()) << name << " is disabled";
    QWidget* modal = QApplication::activeModalWidget();
    ASSERT_TRUE(modal == nullptr || modal->isAncestorOf(widget) || modal == widget)
        << name << " is blocked by \"" << modal->windowTitle() << "\"";
    QPoint place = widget->rect().center();
    if (auto* checkBox = qobject_cast<QCheckBox*>(widget)) {
        QStyleOptionButton option;
        option.initFrom(checkBox);
        place = checkBox->style()
                    ->subElementRect(QStyle::SE_CheckBoxIndicator, &option, checkBox)
                    .center();
    }
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, place);
}

void typeText(QWidget* widget, const QString& text)
{
    const QVector<uint> letters = text.toUcs4();
    for (const uint letter : letters) {
        if (letter < 0x80) {
            QTest::keyClick(widget, static_cast<char>(letter));
        } else { // Qt Test has keys only for ASCII
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown,
                                QString::fromUcs4(&letter, 1), Qt::NoModifier);
        }
    }
}

void typeOver(QLineEdit* field, const QString& text)
{
    ASSERT_NE(field, nullptr);
    QCoreApplication::processEvents();
    ASSERT_TRUE(field->isVisible() && field->isEnabled())
        << field->accessibleName() << " cannot be typed into";
    QApplication::setActiveWindow(field->window());
    field->setFocus();
    ASSERT_TRUE(waitFor([field] { return field->hasFocus(); }));
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    typeText(field, text);
}

void enterText(QLineEdit* field, const QString& text)
{
    typeOver(field, text);
    QTest::keyClick(field, Qt::Key_Tab);
    ASSERT_FALSE(field->hasFocus());
}

void trigger(QAction* action)
{
    ASSERT_NE(action, nullptr);
    ASSERT_TRUE(action->isEnabled()) << action->text() << " is disabled";
    action->trigger();
}

QPushButton* buttonWithText(const QWidget& root, const QString& text)
{
    const QList<QPushButton*> buttons = root.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == text) {
            return button;
        }
    }
    ADD_FAILURE() << "no button \"" << text << "\" in \"" << root.windowTitle() << "\"";
    return nullptr;
}

void flushDeletions()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void expectNoWindowLeft()
{
    flushDeletions();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        ADD_FAILURE() << "left over: " << widget->metaObject()->className() << " \""
                      << widget->windowTitle() << "\"";
        widget->close();
    }
}
