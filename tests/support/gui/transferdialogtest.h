#pragma once

#include "support/fakeports.h"
#include "support/fakeuploader.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"
#include "transfer/uploaddownloaddialog.h"

#include <QComboBox>
#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>

#include <memory>

using UploadDownload::UploadDownloadDialog;

class TransferDialogTest : public ::testing::Test
{
protected:
    ~TransferDialogTest() override
    {
        window.reset();
        expectNoWindowLeft();
    }

    void openWriter(const QString& file = "profilesToUpload.hex") { open(true, file); }
    void openReader(const QString& file = "downloadedProfiles.hex") { open(false, file); }

    void open(bool writes, const QString& file)
    {
        dialog = new UploadDownloadDialog(writes, window.get());
        dialog->setFileLocation(file);
    }

    template <typename T>
    T* child(const QString& name) const
    {
        return childNamed<T>(dialog, name);
    }
    QPushButton* okButton() const { return child<QPushButton>("okButton"); }
    QComboBox* portBox() const { return child<QComboBox>("comPortsDropdown"); }
    QString status() const { return child<QLabel>("statusLabel")->text(); }
    QProgressBar* bar() const { return child<QProgressBar>("progressBar"); }

    QStringList listedPorts() const
    {
        QStringList texts;
        for (int i = 0; i < portBox()->count(); ++i) {
            texts.append(portBox()->itemText(i));
        }
        return texts;
    }

    /// Presses the button and waits until the dialog is gone.
    void transferToTheEnd()
    {
        clickOn(okButton());
        ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
    }

    static bool hasRun(int count) { return FakeUploader::runs().size() >= count; }

    /// Whether every process started so far has ended.
    bool isQuiet() const
    {
        const QList<QProcess*> processes = window->findChildren<QProcess*>();
        return std::all_of(processes.begin(), processes.end(), [](const QProcess* process) {
            return process->state() == QProcess::NotRunning;
        });
    }

    FakeUploader uploader;
    FakePorts ports{{"A", "B", "C"}};
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    QPointer<UploadDownloadDialog> dialog;
};
