#include "transfer/uploaddownloadmanager.h"

#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"

#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>

TEST(UploadDownloadManagerTest, CommandsToComeSaySoAndEmptyNothing)
{
    QWidget window;
    UploadDownload::UploadDownloadManager manager(nullptr, &window);
    QSignalSpy emptied(&manager, &UploadDownload::UploadDownloadManager::deleteAllProfiles);
    for (const auto& command : {&UploadDownload::UploadDownloadManager::on_writeButtonPressed,
                                &UploadDownload::UploadDownloadManager::on_readButtonPressed}) {
        DialogScript script;
        script.thenDo([&window](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Not Available Yet");
            EXPECT_EQ(dialog.parentWidget(), &window);
            clickOn(qobject_cast<QMessageBox*>(&dialog)->button(QMessageBox::Ok));
        });
        (manager.*command)();
    }
    EXPECT_TRUE(emptied.isEmpty());
}
