#pragma once

#include "support/chargerschema.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "testpaths.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

#include <QProcess>

using UploadDownload::UploadDownloadDialog;

inline constexpr char stay[] = "Stay in Bootloader Mode";
inline constexpr char resetNow[] = "Reset Kelvaron";
inline constexpr char uploadFile[] = "profilesToUpload.hex";
inline constexpr char downloadFile[] = "downloadedProfiles.hex";

/// Room for 2048 / 504 - 1 profiles.
inline constexpr int allowed = 3;

inline QByteArray smallSchema(int cellType = 2)
{
    return ChargerSchema::ofChemistries({"Cell"}, cellType);
}

class TransferTest : public MainWindowTest
{
protected:
    TransferTest()
    {
        installBundle("1.1", smallSchema());
        installSimulator();
        start();
    }

    QString uploader() const { return pathOf("supl.mac"); }

    /// The operation letters of the uploader's runs so far.
    QString runs() const
    {
        QStringList letters;
        const QList<QByteArray> lines = contentOf("supl-log.txt").split('\n');
        for (const QByteArray& line : lines) {
            for (const char* letter : {"-E", "-w", "-l", "-R"}) {
                if (line.contains('"' + QByteArray(letter) + '"')) {
                    letters.append(letter);
                }
            }
        }
        return letters.join(' ');
    }

    void makeProfiles(int count) const
    {
        for (int i = 1; i <= count; ++i) {
            makeProfile(QString("Cell %1").arg(i));
        }
    }

    /// Returns everything in the list, value by value.
    QByteArray everything() const
    {
        auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
        EXPECT_TRUE(manager->exportToXML(pathOf("everything.xml")));
        return contentOf("everything.xml");
    }

    UploadDownloadDialog* dialog() const { return window->findChild<UploadDownloadDialog*>(); }
    QString status() const { return childNamed<QLabel>(dialog(), "statusLabel")->text(); }

    void openWriter() { open("actionWriteProfiles"); }
    void openReader() { open("actionReadProfiles"); }

    /// From here on the script handles every further dialog.
    void open(const char* action)
    {
        trigger(command(action));
        ASSERT_NE(dialog(), nullptr);
        script = std::make_unique<DialogScript>();
    }

    /// Presses the dialog's button, waits until the dialog is gone and checks the script.
    void transfer()
    {
        clickOn(childNamed<QPushButton>(dialog(), "okButton"));
        ASSERT_TRUE(waitFor([this] { return dialog() == nullptr; }));
        script.reset();
        expectQuiet();
    }

    void expectQuiet() const
    {
        const QList<QProcess*> processes = window->findChildren<QProcess*>();
        for (QProcess* process : processes) {
            ASSERT_TRUE(waitFor([process] { return process->state() == QProcess::NotRunning; }));
        }
    }

    void expectResetQuestion(const QString& expectedStatus, const QString& press)
    {
        script->expectResetQuestion(press, [=] { EXPECT_EQ(status(), expectedStatus); });
    }
    void expectWritten(const QString& press = stay)
    {
        expectResetQuestion("Write Success!", press);
    }
    void expectRead(const QString& press = stay) { expectResetQuestion("Read Success!", press); }

    void writeList()
    {
        openWriter();
        expectWritten();
        transfer();
    }

    FakePorts ports{{"/dev/ttyKelvaronDemo"}};
    std::unique_ptr<DialogScript> script;
};
