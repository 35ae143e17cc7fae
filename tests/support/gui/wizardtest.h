#pragma once

#include "profiles/profilewizarddialog.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QComboBox>
#include <QSignalSpy>

class WizardTest : public ::testing::Test
{
protected:
    explicit WizardTest(const QByteArray& schema = TestSchema::text()) : window(schema) { open(); }

    ~WizardTest() override
    {
        if (wizard != nullptr) {
            wizard->close();
        }
        flushDeletions();
    }

    void open()
    {
        clickOn(window.ui->addProfileButton);
        wizard = window.findChild<ProfileWizardDialog*>();
        ASSERT_TRUE(wizard != nullptr);
        made = std::make_unique<QSignalSpy>(wizard.data(), &ProfileWizardDialog::newProfileMade);
        EXPECT_TRUE(QTest::qWaitForWindowActive(wizard, patience));
    }

    QPushButton* next() const { return childNamed<QPushButton>(wizard, "nextButton"); }
    QPushButton* back() const { return childNamed<QPushButton>(wizard, "backButton"); }
    QPushButton* cancel() const { return childNamed<QPushButton>(wizard, "cancelButton"); }

    QComboBox* chemistries() const { return wizard->findChild<QComboBox*>(); }

    /// Goes to page 2 with this chemistry.
    void choose(const QString& chemistry)
    {
        chemistries()->setCurrentText(chemistry);
        clickOn(next());
        flushDeletions(); // of the first page
    }

    void goBack()
    {
        clickOn(back());
        flushDeletions(); // of the second page
    }

    QLineEdit* field(const QString& label) const { return editorIn<QLineEdit>(wizard, label); }
    QCheckBox* box(const QString& label) const { return editorIn<QCheckBox>(wizard, label); }

    EditorWindow window;
    QPointer<ProfileWizardDialog> wizard;
    std::unique_ptr<QSignalSpy> made;
};
