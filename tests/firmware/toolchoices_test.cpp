// The file and the port that the firmware tool works with.

#include "support/gui/firmwaretoolwindowtest.h"

#include <QAction>

// Choosing a file

TEST_F(FirmwareToolWindowTest, ChosenFileIsShownByPathAndName)
{
    const QString path = firmware();
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), path);
    clickOn(child<QPushButton>("selectFileButton"));
    EXPECT_EQ(input()->text(), path);
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : v1.5.kelvaron");
}

TEST_F(FirmwareToolWindowTest, MenuChoosesAFileToo)
{
    const QString path = firmware();
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), path);
    trigger(child<QAction>("actionLoad_File"));
    EXPECT_EQ(input()->text(), path);
}

TEST_F(FirmwareToolWindowTest, NextChoiceStartsInTheLastFolder)
{
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), firmware())
        .expectFileDialog("Select Kelvaron Firmware File", filters, firmwareFolder.path(), "");
    clickOn(child<QPushButton>("selectFileButton"));
    clickOn(child<QPushButton>("selectFileButton"));
}

TEST_F(FirmwareToolWindowTest, CancelledChoiceChangesNothing)
{
    type("x/other.kelvaron");
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), "")
        .expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), "");
    clickOn(child<QPushButton>("selectFileButton"));
    clickOn(child<QPushButton>("selectFileButton"));
    EXPECT_EQ(input()->text(), "x/other.kelvaron");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : other.kelvaron");
}

TEST_F(FirmwareToolWindowTest, TypedPathIsTheFile)
{
    type("some/where/v2.kelvaron");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : v2.kelvaron");
    type("some/where/");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : ");
}

TEST_F(FirmwareToolWindowTest, FileNameIsPlainText)
{
    type("<b>bold</b>");
    EXPECT_EQ(child<QLabel>("fileSelectedLabel")->textFormat(), Qt::PlainText);
}

TEST_F(FirmwareToolWindowTest, LongFileNameDoesNotWidenTheWindow)
{
    const int before = window->width();
    type(QString(400, 'x') + ".kelvaron");
    QCoreApplication::processEvents();
    EXPECT_EQ(window->width(), before);
}

TEST_F(FirmwareToolWindowTest, WindowMayGoWhileAFileIsChosen)
{
    DialogScript script;
    script.thenDo([this](QWidget&) { delete window; });
    clickOn(child<QPushButton>("selectFileButton"));
    EXPECT_EQ(window, nullptr);
}

// The ports

TEST_F(FirmwareToolWindowTest, LastPortOfTheSystemComesFirst)
{
    EXPECT_EQ(portNames(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(ports()->currentText(), "C");
}

TEST_F(FirmwareToolWindowTest, NewPortIsAddedAndSelectedWithinTheOldCount)
{
    system.names = QStringList({"A", "B", "C", "D"});
    lookAtPorts();
    EXPECT_EQ(portNames(), QStringList({"D", "C", "B", "A"}));
    EXPECT_EQ(ports()->currentText(), "D");
}

TEST_F(FirmwareToolWindowTest, PortThatGoesIsTakenOff)
{
    system.names = QStringList({"A", "C"});
    lookAtPorts();
    EXPECT_EQ(portNames(), QStringList({"C", "A"}));
}

TEST_F(FirmwareToolWindowTest, PortsAreLookedAtWithoutBeingAsked)
{
    system.names = QStringList("A");
    EXPECT_TRUE(waitFor([this] { return ports()->count() == 1; }));
}

TEST_F(FirmwareToolWindowTest, SelectedPortIsFlashed)
{
    ports()->setCurrentText("A");
    type(firmware());
    clickOn(submit());
    const QStringList arguments = uploader.waitForStart();
    EXPECT_EQ(arguments.mid(0, 2), QStringList({"-s", "A"}));
}

TEST_F(FirmwareToolWindowTest, WithoutPortsTheUploaderIsAskedAllTheSame)
{
    system.names.clear();
    lookAtPorts();
    type(firmware());
    clickOn(submit());
    EXPECT_EQ(uploader.waitForStart().mid(0, 3), QStringList({"-s", "", "-h"}));
}
