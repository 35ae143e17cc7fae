#include "look/screenscaling.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>

/// kelvaron-message TITLE TEXT [BUTTON...]: shows a message to a user who has no terminal. The exit
/// code is the number of the button that was pressed, counted from 0; closing the box counts as the
/// last button. Without BUTTON the box has an OK button.
int main(int argc, char** argv)
{
    ScreenScaling::use();
    const QApplication application(argc, argv);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icon.png")));
    const QStringList arguments = QApplication::arguments();
    QMessageBox box;
    box.setWindowTitle(arguments.value(1));
    box.setTextFormat(Qt::PlainText);
    box.setText(arguments.value(2));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QStringList texts = arguments.mid(3);
    if (texts.isEmpty()) {
        texts.append(QStringLiteral("OK"));
    }
    QList<QAbstractButton*> buttons;
    for (const QString& text : qAsConst(texts)) {
        buttons.append(box.addButton(text, QMessageBox::ActionRole));
    }
    box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box.setEscapeButton(buttons.last());
    box.exec();
    return buttons.indexOf(box.clickedButton());
}
