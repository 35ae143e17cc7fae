// Message boxes with a large font size of the desktop.

#include "firmware/firmwaremessagedialogs.h"
#include "messagedialogs.h"
#include "support/gui/cuttexts.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <QScreen>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace
{
struct Box
{
    const char* name;
    int (*show)(QWidget*);
};

int showProfilesLeftOut(QWidget* parent)
{
    QStringList profiles;
    for (int i = 1; i <= 60; ++i) {
        profiles.append(QString("Profile of the workshop %1").arg(i));
    }
    return MessageDialogs::profilesLeftOut(parent, profiles, "saved_profiles/backup.xml");
}

int showFatalError(QWidget* parent)
{
    return MessageDialogs::fatalError(parent, "kelvaron_chemistries.cb",
                                      "Member \"capacity\" has no category.",
                                      "saved_profiles/rescued_profiles_2026-01-31_12-30-00.xml");
}

const Box boxes[] = {
    {"about", MessageDialogs::aboutKelvaronProfileEditor},
    {"help", MessageDialogs::helpKelvaronProfileEditor},
    {"firmware tool help", FirmwareMessageDialogs::firmwareToolHelp},
    {"replace profiles", FirmwareMessageDialogs::askReplaceProfiles},
    {"append", MessageDialogs::askAppendProfiles},
    {"delete all", MessageDialogs::askDeleteAllProfiles},
    {"update check", MessageDialogs::firmwareCheckerError},
    {"left out", showProfilesLeftOut},
    {"fatal error", showFatalError},
};

/// The lines in which a label shows its rich text.
QStringList linesOf(const QLabel& label)
{
    QTextDocument document;
    document.setDefaultFont(label.font());
    document.setDocumentMargin(0);
    document.setHtml(label.text());
    document.setTextWidth(label.contentsRect().width());
    document.size(); // computes the layout of the lines
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QTextLine line = block.layout()->lineAt(i);
            lines.append(block.text().mid(line.textStart(), line.textLength()).trimmed());
        }
    }
    return lines;
}
} // namespace

/// The desktop's font size in points.
class LargeMessages : public ::testing::TestWithParam<int>
{
protected:
    LargeMessages()
    {
        QFont font = before;
        font.setPointSize(GetParam());
        QApplication::setFont(font);
    }
    ~LargeMessages() override { QApplication::setFont(before); }

    template <typename Check>
    static void checkShown(const Box& box, Check check)
    {
        DialogScript script;
        script.thenDo([&](QWidget& dialog) {
            for (int i = 0; i < 3; ++i) {
                QCoreApplication::processEvents(); // one layout may trigger another
            }
            check(dialog);
            dialog.close();
        });
        box.show(nullptr);
    }

    const QFont before = QApplication::font();
};

TEST_P(LargeMessages, StayOnTheScreenWithAllTheirTexts)
{
    for (const Box& box : boxes) {
        checkShown(box, [&box](const QWidget& dialog) {
            const QSize screen = dialog.screen()->availableSize();
            EXPECT_LE(dialog.width(), screen.width()) << box.name;
            EXPECT_LE(dialog.height(), screen.height()) << box.name;
            EXPECT_EQ(cutTexts(const_cast<QWidget*>(&dialog)), QStringList()) << box.name;
        });
    }
}

TEST_P(LargeMessages, TheLinkOfTheAboutBoxIsOnOneLine)
{
    checkShown(boxes[0], [](const QWidget& dialog) {
        const auto* label = childNamed<QLabel>(&dialog, "qt_msgbox_label");
        const QString link = QRegularExpression(">([^<]*)</a>").match(label->text()).captured(1);
        EXPECT_FALSE(link.isEmpty());
        const QStringList lines = linesOf(*label);
        ASSERT_FALSE(lines.isEmpty());
        EXPECT_EQ(lines.last(), link);
    });
}

INSTANTIATE_TEST_SUITE_P(Points, LargeMessages, ::testing::Values(9, 24, 40));
