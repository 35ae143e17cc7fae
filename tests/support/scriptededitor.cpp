// The whole editor with a simulated user: its own main() and an object that reports on
// standard output what a user would see, a line each, and reacts as a user would:
//
//   MESSAGE BOX {...}        answered by its default button, else by its only one
//   MAIN WINDOW SHOWN {...}  quits the event loop with the code in SCRIPTED_EXIT_CODE, else 0
//   FIRMWARE TOOL SHOWN      closed; before that, a file named by SCRIPTED_FIRMWARE is flashed until
//                            the flash has ended or the uploader has made "uploader.started"
//   RESET QUESTION SHOWN     closed
//
// The braces contain one JSON object. SCRIPTED_ENCODING names the encoding that the system
// is to have instead of its own: tests cannot count on installed locales. With SCRIPTED_REPLACED the
// executable is replaced before main(), as by an upgrade.

#include "base/standardoutput.h"
#include "main.cpp" // NOLINT(bugprone-suspicious-include): its main() is the program under test

#include <QAbstractButton>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QPushButton>
#include <QTextCodec>
#include <QTimer>

#include <cstdio>

namespace
{
const bool isReplaced = [] {
    if (!qEnvironmentVariableIsSet("SCRIPTED_REPLACED")) {
        return false;
    }
    const QString own = QFile::symLinkTarget("/proc/self/exe");
    const QString other = own + ".new";
    return QFile::copy(own, other)
           && std::rename(QFile::encodeName(other).constData(), QFile::encodeName(own).constData())
                  == 0;
}();

void report(const QString& what, const QJsonObject& details)
{
    printLine(what + QLatin1Char(' ')
              + QString::fromUtf8(QJsonDocument(details).toJson(QJsonDocument::Compact)));
}

QString nameOf(const QAbstractButton* button)
{
    return button != nullptr ? button->text().remove(QLatin1Char('&')) : QString();
}

void answer(QMessageBox& box)
{
    const QList<QAbstractButton*> buttons = box.buttons();
    QJsonArray names;
    for (const QAbstractButton* button : buttons) {
        names.append(nameOf(button));
    }
    report(QStringLiteral("MESSAGE BOX"),
           {{QStringLiteral("title"), box.windowTitle()},
            {QStringLiteral("text"), box.text()},
            {QStringLiteral("details"), box.informativeText()},
            {QStringLiteral("buttons"), names},
            {QStringLiteral("default"), nameOf(box.defaultButton())},
            {QStringLiteral("modal"), box.isModal()},
            {QStringLiteral("icon"), static_cast<int>(box.icon())},
            {QStringLiteral("parent"), box.parentWidget() != nullptr ? QString::fromLatin1(
                                           box.parentWidget()->metaObject()->className())
                                                                     : QString()}});
    QAbstractButton* button = box.defaultButton();
    (button != nullptr ? button : buttons.first())->click();
}

class Answerer : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow()) {
            // Reacts once the window is complete and its event loop runs.
            QTimer::singleShot(0, widget, [widget] { react(*widget); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static void react(QWidget& window)
    {
        if (auto* box = qobject_cast<QMessageBox*>(&window)) {
            answer(*box);
        } else if (window.inherits("MainWindow")) {
            report(QStringLiteral("MAIN WINDOW SHOWN"),
                   {{QStringLiteral("title"), window.windowTitle()}});
            QCoreApplication::exit(qEnvironmentVariableIntValue("SCRIPTED_EXIT_CODE"));
        } else if (window.inherits("FirmwareTool::KelvaronFirmwareToolWindow")) {
            printLine(QStringLiteral("FIRMWARE TOOL SHOWN"));
            flashAndClose(window);
        } else if (window.inherits("KelvaronResetDialog")) {
            printLine(QStringLiteral("RESET QUESTION SHOWN"));
            window.close();
        }
    }

    static void flashAndClose(QWidget& tool)
    {
        const QString firmware = qEnvironmentVariable("SCRIPTED_FIRMWARE");
        if (firmware.isEmpty()) {
            tool.close();
            return;
        }
        QMetaObject::invokeMethod(&tool, "on_fileInputBox_textEdited", Q_ARG(QString, firmware));
        auto* button = tool.findChild<QPushButton*>(QStringLiteral("submitButton"));
        button->click();
        auto* look = new QTimer(&tool);
        QObject::connect(look, &QTimer::timeout, &tool, [&tool, button] {
            if (button->isEnabled() || QFile::exists(QStringLiteral("uploader.started"))) {
                tool.close();
            }
        });
        look->start(10);
    }
};

void seatAnswerer()
{
    auto* answerer = new Answerer;
    answerer->setParent(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(answerer);
    const QByteArray encoding = qgetenv("SCRIPTED_ENCODING");
    if (!encoding.isEmpty()) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(encoding));
    }
}
} // namespace

Q_COREAPP_STARTUP_FUNCTION(seatAnswerer)
