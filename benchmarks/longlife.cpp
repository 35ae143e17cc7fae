// Simulates long use in one run: transfers to and from the simulated charger, lists replaced from a
// file, and bundle reloads, and reports the memory in use at intervals. Works in its own copy of
// the demo installation. Fails if an operation keeps more memory than intended; under the
// sanitizers the leak checker decides.
//
//     long_life                                      1000 transfers, 1000 replacements, 200 reloads
//     long_life TRANSFERS REPLACEMENTS RELOADS       these numbers

#include "CBGenerator/generator.h"
#include "CBGenerator/structsettings.h"
#include "mainwindow.h"
#include "support/ownenvironment.h"
#include "support/waiting.h"
#include "transfer/downloadprofiles.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploaddownloaddialog.h"
#include "transfer/uploadprofiles.h"
#include "xmlformat/xmlmanager.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>

#include <malloc.h>
#include <unistd.h>

namespace
{
constexpr int profileCount = 3;

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "long life: %s\n", what);
    std::exit(EXIT_FAILURE);
}

void require(bool condition, const char* what)
{
    if (!condition) {
        fail(what);
    }
}

/// Returns the resident memory of this process in KiB.
long residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    require(file.open(QIODevice::ReadOnly), "/proc/self/statm cannot be read");
    return file.readAll().split(' ').value(1).toLong() * (sysconf(_SC_PAGESIZE) / 1024);
}

// Returns the number of allocated bytes.
#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();

std::size_t heapBytes()
{
    return __sanitizer_get_current_allocated_bytes();
}
#else
std::size_t heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}
#endif

/// Writes to standard error, because the editor's standard output is discarded here.
template <typename... Arguments>
void print(const char* format, Arguments... arguments)
{
    std::fprintf(stderr, format, arguments...);
}

/// Answers every dialog of these operations.
class Answerer : public QObject
{
public:
    Answerer()
    {
        connect(&timer, &QTimer::timeout, this, &Answerer::answer);
        timer.start(1);
    }

    QString fileToLoad;

private:
    void answer()
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || !dialog->isVisible() || dialog == answered) {
            return;
        }
        answered = dialog;
        if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
            require(box->windowTitle() == QLatin1String("Add Profiles to List?"),
                    qPrintable(box->windowTitle() + ": " + box->text()));
            press(box, QStringLiteral("&Replace Profiles"));
        } else if (qobject_cast<KelvaronResetDialog*>(dialog) != nullptr) {
            press(dialog, QStringLiteral("Stay in Bootloader Mode"));
        } else if (auto* chooser = qobject_cast<QFileDialog*>(dialog)) {
            auto* name = chooser->findChild<QLineEdit*>("fileNameEdit");
            name->setText(fileToLoad);
            QTest::keyClick(name, Qt::Key_Return);
        } else if (qobject_cast<UploadDownload::UploadDownloadDialog*>(dialog) != nullptr) {
            QTest::mouseClick(dialog->findChild<QPushButton*>("okButton"), Qt::LeftButton);
        }
    }

    static void press(const QWidget* dialog, const QString& text)
    {
        const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
        for (QPushButton* button : buttons) {
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        fail(qPrintable("no button " + text));
    }

    QTimer timer;
    QPointer<QWidget> answered;
};

/// The demo installation next to this program, with a simulated charger without pauses.
void install()
{
    const QDir here(QCoreApplication::applicationDirPath());
    const QString name = QStringLiteral("KelvaronProfileEditorFiles");
    const QDir demo(here.filePath("../bin/" + name));
    const QDir files(here.filePath(name));
    QDir(files).removeRecursively();
    require(here.mkpath(name), "no folder for the installation");
    const QStringList installed = demo.entryList({"v*.kelvaron", "supl.*", "serial_ports.txt"});
    for (const QString& file : installed) {
        require(QFile::copy(demo.filePath(file), files.filePath(file)), "no installation");
    }
    QFile faults(files.filePath("supl-faults.txt"));
    require(faults.open(QIODevice::WriteOnly) && faults.write("pace = 0%\n") > 0, "no pace");
}

class LongLife
{
public:
    LongLife()
    {
        window.show();
        list = window.findChild<QListWidget*>("profileNamesList");
        for (int i = 0; i < profileCount; ++i) {
            makeProfile();
        }
        answerer.fileToLoad = QDir::current().absoluteFilePath("saved_profiles/list.xml");
        const auto* files = window.findChild<XMLGeneratorParser::XMLManager*>();
        require(files->exportToXML(answerer.fileToLoad), "the list cannot be saved");
    }

    /// `most` is the number of bytes that one operation may keep: a transfer keeps its worker and
    /// its processes, a reload the previous generator, and a QListWidget some 30 bytes for each row
    /// that it ever had.
    struct Phase
    {
        const char* name;
        int count;
        double most;
        std::function<void(int)> operation;
    };

    bool run(int transfers, int replacements, int reloads)
    {
        const QList<Phase> phases = {
            {"transfer", transfers, 6000, [this](int i) { transfer(i % 2 == 0); }},
            {"list replacement", replacements, 200, [this](int) { trigger("actionImportXML"); }},
            {"bundle reload", reloads, 300000, [this](int) {
                 QMetaObject::invokeMethod(&window, "reloadBundle", Qt::DirectConnection);
             }}};
        tellGeneratorSize();
        bool isGood = true;
        for (const Phase& phase : phases) {
            isGood = play(phase) && isGood;
        }
        return isGood;
    }

private:
    bool play(const Phase& phase)
    {
        print("%d x %s\n", phase.count, phase.name);
        if (phase.count <= 0) {
            return true;
        }
        for (int i = 0; i < warmUp; ++i) { // objects created once and kept
            once(phase.operation, i);
        }
        const std::size_t before = heapBytes();
        tellMemory(0);
        for (int i = 1; i <= phase.count; ++i) {
            once(phase.operation, i);
            if (i % qMax(1, phase.count / intervals) == 0) {
                tellMemory(i);
            }
        }
        const double each =
            (static_cast<double>(heapBytes()) - static_cast<double>(before)) / phase.count;
        constexpr double atOnce = 40000; // memory that varies independently of the count
        const bool isGood = each <= phase.most + atOnce / phase.count;
        print("  kept by each: %.0f bytes, %s %.0f\n", each, isGood ? "at most" : "MORE THAN",
              phase.most);
        print("  kept on purpose so far: %d workers, %d processes, %d generators; %d objects "
              "in all\n",
              window.findChildren<UploadDownload::UploadProfiles*>().size()
                  + window.findChildren<UploadDownload::DownloadProfiles*>().size(),
              window.findChildren<QProcess*>().size(),
              window.findChildren<HParser::Generator*>().size(),
              window.findChildren<QObject*>().size());
        return isGood;
    }

    static void tellMemory(int done)
    {
        print("  after %4d: %9zu bytes of heap, %7ld KiB resident\n", done, heapBytes(),
              residentMemory());
    }

    void once(const std::function<void(int)>& operation, int number)
    {
        operation(number);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        require(list->count() == profileCount, "the list is not what it was");
    }

    /// What a reload keeps intentionally: the previous generator.
    static void tellGeneratorSize()
    {
        const std::size_t before = heapBytes();
        HParser::Generator generator(nullptr);
        generator.setHFileLocation("kelvaron_chemistries.cb");
        generator.generate();
        generator.getGlobalSettings()->buildFormulaTrees();
        print("a generator of the demo's schema in use: %zu bytes\n", heapBytes() - before);
    }

    void makeProfile()
    {
        QTest::mouseClick(window.findChild<QPushButton*>("addProfileButton"), Qt::LeftButton);
        QWidget* wizard = QApplication::activeModalWidget();
        require(wizard != nullptr, "no wizard");
        auto* next = wizard->findChild<QPushButton*>("nextButton");
        QTest::mouseClick(next, Qt::LeftButton);
        QTest::mouseClick(next, Qt::LeftButton);
    }

    void trigger(const char* command) { window.findChild<QAction*>(command)->trigger(); }

    void transfer(bool writes)
    {
        trigger(writes ? "actionWriteProfiles" : "actionReadProfiles");
        const QPointer<QObject> dialog = window.findChild<UploadDownload::UploadDownloadDialog*>();
        require(dialog != nullptr, "no transfer dialog");
        require(waitFor([&dialog] { return dialog == nullptr; }), "a transfer does not end");
    }

    static constexpr int warmUp = 10;
    static constexpr int intervals = 10;
    MainWindow window;
    QListWidget* list = nullptr;
    Answerer answerer;
};

} // namespace

int main(int argc, char** argv)
{
    const OwnEnvironment environment;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    require(argc == 1 || argc == 4, "usage: long_life [TRANSFERS REPLACEMENTS RELOADS]");
    const auto count = [&](int number, int usual) {
        return argc == 1 ? usual : std::atoi(argv[number]);
    };
    QPixmapCache::setCacheLimit(0); // its size is bounded, but varies more than what is kept
    install();
    bool isGood = false;
    {
        LongLife life;
        isGood = life.run(count(1, 1000), count(2, 1000), count(3, 200));
    }
    print("%zu bytes of heap, %ld KiB resident after the main window has gone\n", heapBytes(),
          residentMemory());
    return isGood ? EXIT_SUCCESS : EXIT_FAILURE;
}
