// Simulates long use in one run: transfers to and from the simulated charger, lists replaced from a
// file, and bundle reloads, and reports the memory in use at intervals. Works in its own
// installation. Fails if an operation keeps more memory than intended; under the sanitizers the leak
// checker decides.
//
//     long_life                                      1000 transfers, 1000 replacements, 200 reloads
//     long_life TRANSFERS REPLACEMENTS RELOADS       these numbers

#include "CBGenerator/generator.h"
#include "CBGenerator/structsettings.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "support/ownenvironment.h"
#include "transfer/downloadprofiles.h"
#include "transfer/uploaddownloaddialog.h"
#include "transfer/uploadprofiles.h"

#include <QPixmapCache>
#include <QProcess>

#include <cstdio>
#include <cstdlib>

#include <malloc.h>

namespace
{
constexpr int profileCount = 3;

/// Returns the resident memory of this process in KiB.
long residentMemory()
{
    return contentOf("/proc/self/statm").split(' ').value(1).toLong()
           * (sysconf(_SC_PAGESIZE) / 1024);
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

class LongLife : public MainWindowTest
{
protected:
    LongLife()
    {
        installSimulator();
        start();
        for (int i = 0; i < profileCount; ++i) {
            makeProfile(QString("Profile %1").arg(i));
        }
        writeFile("saved_profiles/list.xml", document());
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

    void play(const Phase& phase)
    {
        print("%d x %s\n", phase.count, phase.name);
        if (phase.count <= 0) {
            return;
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
        EXPECT_LE(each, phase.most + atOnce / phase.count) << "bytes kept by each " << phase.name;
        print("  kept by each: %.0f bytes of at most %.0f\n", each, phase.most);
        print("  kept on purpose so far: %d workers, %d processes, %d generators; %d objects "
              "in all\n",
              window->findChildren<UploadDownload::UploadProfiles*>().size()
                  + window->findChildren<UploadDownload::DownloadProfiles*>().size(),
              window->findChildren<QProcess*>().size(),
              window->findChildren<HParser::Generator*>().size(),
              window->findChildren<QObject*>().size());
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
        ASSERT_EQ(list()->count(), profileCount);
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

    void replaceList()
    {
        DialogScript script;
        script.expectImportDialog("XML", pathOf("saved_profiles"), "list.xml")
            .expectAppendQuestion("Replace Profiles");
        trigger(command("actionImportXML"));
    }

    void transfer(bool writes)
    {
        trigger(command(writes ? "actionWriteProfiles" : "actionReadProfiles"));
        const QPointer<QWidget> dialog = window->findChild<UploadDownload::UploadDownloadDialog*>();
        DialogScript script;
        if (!writes) {
            script.expectAppendQuestion("Replace Profiles");
        }
        script.expectResetQuestion();
        clickOn(childNamed<QPushButton>(dialog, "okButton"));
        ASSERT_TRUE(waitFor([&dialog] { return dialog == nullptr; }));
    }

    static constexpr int warmUp = 10;
    static constexpr int intervals = 10;
    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
};

int transfers = 1000;
int replacements = 1000;
int reloads = 200;

/// Reports failures to standard error: standard output is full of the editor's output.
class FailuresOnStandardError : public ::testing::EmptyTestEventListener
{
    void OnTestPartResult(const ::testing::TestPartResult& result) override
    {
        if (result.failed()) {
            print("%s:%d: %s\n", result.file_name(), result.line_number(), result.message());
        }
    }
};
} // namespace

TEST_F(LongLife, KeepsWhatItKeepsOnPurpose)
{
    tellGeneratorSize();
    play({"transfer", transfers, 6000, [this](int i) { transfer(i % 2 == 0); }});
    play({"list replacement", replacements, 200, [this](int) { replaceList(); }});
    play({"bundle reload", reloads, 300000, [this](int) { window->reloadBundle(); }});
    window.reset();
    flushDeletions();
    print("%zu bytes of heap, %ld KiB resident after the main window has gone\n", heapBytes(),
          residentMemory());
}

int main(int argc, char** argv)
{
    const OwnEnvironment environment;
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new FailuresOnStandardError);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    if (argc == 4) {
        transfers = std::atoi(argv[1]);
        replacements = std::atoi(argv[2]);
        reloads = std::atoi(argv[3]);
    }
    QPixmapCache::setCacheLimit(0); // its size is bounded, but varies more than what is kept
    return RUN_ALL_TESTS();
}
