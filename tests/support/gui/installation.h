#pragma once

#include "mainwindow.h"
#include "profiles/profilename.h"
#include "support/filestest.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <memory>

/// A new installation folder next to the test program, and the main window using it. Both are
/// deleted with the test.
class MainWindowTest : public FilesTest
{
protected:
    MainWindowTest();
    ~MainWindowTest() override;

    /// Makes the main window, shows it and makes it active.
    void start();

    /// Packs a bundle file of this version into the installation folder.
    void installBundle(const QString& version, const QByteArray& schema) const;

    /// The installed demo's schema header.
    static QByteArray demoSchema();

    /// Puts the simulated charger in the uploader's place, in a hurry and with these faults.
    void installSimulator(const QByteArray& faults = {}) const;
    void setFaults(const QByteArray& lines) const;

    template <typename T>
    T* child(const QString& name) const
    {
        return childNamed<T>(window.get(), name);
    }

    QAction* command(const QString& name) const;

    /// The toolbar's command with this text; nullptr when there is none.
    QAction* toolbarCommand(const QString& text) const;

    /// Makes a profile with the wizard.
    void makeProfile(const QString& title, int chemistry = 0) const;

    QListWidget* list() const;
    ProfileName* row(int number) const;
    QString rowTitle(int number) const;
    QStringList titles() const;

    /// The list as it would be saved.
    QByteArray document() const;

    /// start(), and the profiles "One" and "Two".
    void startWithTwoProfiles();

    std::unique_ptr<MainWindow> window;

private:
    QString workingFolder;
};
