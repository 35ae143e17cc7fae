#include "support/fuzzgui.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QPushButton>

void FuzzGui::startApplication()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    if (QCoreApplication::instance() == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        new QApplication(count, arguments);
    }
}

FuzzGui::DialogAnswers::DialogAnswers()
{
    QObject::connect(&timer, &QTimer::timeout, [this] { answer(); });
    timer.start(0);
}

void FuzzGui::DialogAnswers::answer()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        return;
    }
    const auto* box = qobject_cast<QMessageBox*>(dialog);
    answered.append(box != nullptr ? box->text() : dialog->windowTitle());
    if (box != nullptr && box->button(QMessageBox::Yes) != nullptr) {
        box->button(QMessageBox::Yes)->click();
    } else {
        dialog->reject();
    }
}
