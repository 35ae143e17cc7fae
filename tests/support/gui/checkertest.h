#pragma once

#include "applicationglobalmap.h"
#include "support/files.h"
#include "support/gui/updateserver.h"
#include "support/waiting.h"

#include <QSignalSpy>

#include <memory>

using Checker = NewFirmwareChecker::NewFirmwareChecker;
using Info = QMap<QString, QString>;

/// A checker of a local server, in an empty working folder, with bundle 1.9 in use.
class CheckerTest : public ::testing::Test
{
protected:
    CheckerTest()
    {
        qRegisterMetaType<Info>(); // for the signal spies
        checker = new Checker(nullptr);
        downloaded = std::make_unique<QSignalSpy>(checker.data(), &Checker::firmwareDownloaded);
        failed = std::make_unique<QSignalSpy>(checker.data(), &Checker::error);
        told = std::make_unique<QSignalSpy>(checker.data(), &Checker::firmwareInfoDownloaded);
        ApplicationGlobalMap::putString("bundle_version", "1.9");
    }

    ~CheckerTest() override
    {
        delete checker;
        ApplicationGlobalMap::putString("bundle_version", {});
    }

    /// The values in a document.
    Info read(const QByteArray& document)
    {
        checker->on_firmwareInfoDownloaded(document);
        EXPECT_FALSE(told->isEmpty());
        return told->takeLast().at(0).value<Info>();
    }

    void tellVersion(const QString& version, const QString& link = {})
    {
        read("<info><current_version>" + version.toHtmlEscaped().toUtf8()
             + "</current_version><download_link>" + link.toUtf8() + "</download_link></info>");
    }

    static QStringList files() { return QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    /// Fetches the bundle and waits for the end.
    void fetchBundle()
    {
        checker->downloadLatestFirmware();
        EXPECT_TRUE(waitFor([this] { return downloaded->size() + failed->size() > 0; }));
    }

    void expectSaved() const
    {
        EXPECT_EQ(downloaded->size(), 1);
        EXPECT_TRUE(failed->isEmpty());
    }

    void expectFailed() const
    {
        EXPECT_EQ(failed->size(), 1);
        EXPECT_TRUE(downloaded->isEmpty());
    }

    const WorkingFolder folder;
    UpdateServer server;
    QPointer<Checker> checker;
    std::unique_ptr<QSignalSpy> told;
    std::unique_ptr<QSignalSpy> downloaded;
    std::unique_ptr<QSignalSpy> failed;
};
