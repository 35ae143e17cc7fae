#include "profiles/profilename.h"

#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QApplication>
#include <QSignalSpy>

namespace
{
const QString darkMark = "color: black; border:none;";
const QString greyMark = "color: rgb(170,170,170); border:none;";
const QString redCross = "color: rgb(255,0,0); border:none;";
const QString greyCross = "color: rgb(180,180,180); border:none;";

QImage imageOf(const QString& file)
{
    return QIcon(file).pixmap(32, 32).toImage();
}
} // namespace

/// A row in a shown list.
class ProfileNameTest : public ::testing::Test
{
protected:
    ProfileNameTest() { window.add("Torch"); }

    ProfileName* row() const { return window.row(0); }
    QPushButton* light() const { return childNamed<QPushButton>(row(), "activeProfileButton"); }
    QPushButton* mark() const { return childNamed<QPushButton>(row(), "defaultProfileButton"); }
    QPushButton* cross() const { return childNamed<QPushButton>(row(), "deleteProfileButton"); }
    QLabel* title() const { return childNamed<QLabel>(row(), "profileTitle"); }
    QLabel* subtitle() const { return childNamed<QLabel>(row(), "profileSubtitle"); }

    void expectLight(bool on) const
    {
        EXPECT_EQ(light()->toolTip(), on ? "Active" : "Not Active");
        EXPECT_EQ(light()->icon().pixmap(32, 32).toImage(),
                  imageOf(on ? ":/new/images/greenlight.PNG" : ":/new/images/nolight.PNG"));
        EXPECT_EQ(row()->getActiveStatus(), on);
        EXPECT_EQ(window.setting(0, "active")->isOn(), on);
    }

    void expectMark(bool on) const
    {
        EXPECT_EQ(mark()->toolTip(), on ? "Default" : "Not Default");
        EXPECT_EQ(mark()->styleSheet(), on ? darkMark : greyMark);
        EXPECT_EQ(row()->getDefaultStatus(), on);
        EXPECT_EQ(window.setting(0, "default")->isOn(), on);
    }

    EditorWindow window;
};

TEST_F(ProfileNameTest, PointerMayComeAndGoBeforeTheRowIsPainted)
{
    const ProfileNameListWidget unseen(ProfileName::FormTime::WHEN_SEEN);
    QEvent leave(QEvent::Leave);
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(unseen.getProfileName(), &leave);
    QApplication::sendEvent(unseen.getProfileName(), &enter);
    const auto* button = childNamed<QPushButton>(unseen.getProfileName(), "deleteProfileButton");
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->styleSheet(), redCross);
}

TEST(ProfileNameAlone, StartsWithPlaceholdersAndNoFlags)
{
    const ProfileName row(nullptr, nullptr);
    EXPECT_EQ(row.getTitle(), "Title");
    EXPECT_EQ(row.getSubtitle(), "Subtitle");
    EXPECT_FALSE(row.getActiveStatus());
    EXPECT_FALSE(row.getDefaultStatus());
    const auto* light = childNamed<QPushButton>(&row, "activeProfileButton");
    EXPECT_EQ(light->styleSheet(), "border:none;");
    EXPECT_EQ(light->toolTip(), "Not Active");
    EXPECT_EQ(light->icon().pixmap(32, 32).toImage(), imageOf(":/new/images/nolight.PNG"));
    EXPECT_TRUE(light->text().isEmpty());
    const auto* mark = childNamed<QPushButton>(&row, "defaultProfileButton");
    EXPECT_EQ(mark->text(), "D");
    EXPECT_EQ(mark->styleSheet(), greyMark);
    EXPECT_EQ(mark->toolTip(), "Not Default");
    const auto* cross = childNamed<QPushButton>(&row, "deleteProfileButton");
    EXPECT_EQ(cross->text(), "x");
    EXPECT_EQ(cross->styleSheet(), greyCross);
    EXPECT_EQ(cross->toolTip(), "Delete Profile");
    for (const QPushButton* button : {light, mark, cross}) {
        EXPECT_EQ(button->cursor().shape(), Qt::PointingHandCursor);
    }
    EXPECT_EQ(childNamed<QLabel>(&row, "profileTitle")->font().family(), "Arial");
    EXPECT_NE(row.findChild<QFrame*>("line"), nullptr);
}

TEST(ProfileNameAlone, PicturesAreThere)
{
    for (const char* file : {":/new/images/nolight.PNG", ":/new/images/greenlight.PNG",
                             ":/new/images/greenlight2.PNG"}) {
        EXPECT_FALSE(imageOf(file).isNull()) << file;
    }
    EXPECT_NE(imageOf(":/new/images/nolight.PNG"), imageOf(":/new/images/greenlight.PNG"));
}

TEST_F(ProfileNameTest, ShowsTheActiveFlagAndStoresIt)
{
    expectLight(false);
    row()->setActive(true);
    expectLight(true);
    row()->setActive(false);
    expectLight(false);
}

TEST_F(ProfileNameTest, ShowsTheDefaultFlagAndStoresIt)
{
    expectMark(false);
    row()->setDefault(true);
    expectMark(true);
    row()->setDefault(false);
    expectMark(false);
}

TEST_F(ProfileNameTest, TakingAProfileClearsItsFlags)
{
    row()->setActive(true);
    row()->setDefault(true);
    row()->setProfileSettings(row()->getProfileSettings());
    expectLight(false);
    expectMark(false);
}

TEST_F(ProfileNameTest, ClicksOnlyAskForChanges)
{
    QObject::disconnect(row(), nullptr, window.list, nullptr);
    QSignalSpy active(row(), &ProfileName::activeStatusChangeRequest);
    QSignalSpy isDefault(row(), &ProfileName::defaultStatusChangeRequest);
    QSignalSpy deletion(row(), &ProfileName::deleteMeSignal);

    clickOn(light());
    clickOn(mark());
    clickOn(cross());
    ASSERT_EQ(active.count(), 1);
    EXPECT_EQ(active.at(0).at(1), true);
    ASSERT_EQ(isDefault.count(), 1);
    EXPECT_EQ(isDefault.at(0).at(1), true);
    EXPECT_EQ(deletion.count(), 1);
    expectLight(false);
    expectMark(false);

    row()->setActive(true);
    row()->setDefault(true);
    clickOn(light());
    clickOn(mark());
    EXPECT_EQ(active.at(1).at(1), false);
    EXPECT_EQ(isDefault.at(1).at(1), false);
    expectLight(true);
    expectMark(true);
}

TEST_F(ProfileNameTest, HighlightIsGreyAndItalic)
{
    row()->highlight();
    EXPECT_EQ(row()->styleSheet(), "background-color:rgb(200,200,200);");
    EXPECT_TRUE(title()->font().italic());
    EXPECT_TRUE(subtitle()->font().italic());
    row()->dehighlight();
    EXPECT_EQ(row()->styleSheet(), "background-color:rgb(255,255,255);");
    EXPECT_FALSE(title()->font().italic());
    EXPECT_FALSE(subtitle()->font().italic());
}

TEST_F(ProfileNameTest, PaintsItsBackground)
{
    const QPoint emptyPlace = row()->pos() + QPoint(row()->width() / 2, 2);
    const auto shownColour = [&] {
        return window.ui->profileNamesList->viewport()->grab().toImage().pixelColor(emptyPlace);
    };
    row()->highlight();
    EXPECT_EQ(shownColour(), QColor(200, 200, 200));
    row()->dehighlight();
    EXPECT_EQ(shownColour(), QColor(255, 255, 255));
}

TEST_F(ProfileNameTest, CrossIsRedUnderThePointer)
{
    QTest::mouseMove(window.ui->statusBar);
    QTest::mouseMove(title());
    EXPECT_TRUE(waitFor([this] { return cross()->styleSheet() == redCross; }));
    QTest::mouseMove(window.ui->statusBar);
    EXPECT_TRUE(waitFor([this] { return cross()->styleSheet() == greyCross; }));
}

TEST_F(ProfileNameTest, RowsAre46PixelsHigh)
{
    EXPECT_EQ(window.item(0)->sizeHint(), QSize(0, 46));
    window.add("Second");
    EXPECT_EQ(window.ui->profileNamesList->visualItemRect(window.item(1)).height(), 46);
}

TEST_F(ProfileNameTest, TextsAreShownAsTyped)
{
    row()->setTitle("<b>a & b</b>");
    row()->setSubtitle("<i>x</i>");
    EXPECT_EQ(title()->textFormat(), Qt::PlainText);
    EXPECT_EQ(subtitle()->textFormat(), Qt::PlainText);
    EXPECT_EQ(row()->getTitle(), "<b>a & b</b>");
    EXPECT_EQ(row()->getSubtitle(), "<i>x</i>");
}

TEST_F(ProfileNameTest, CloneHasTheSameProfileTextsAndFlags)
{
    row()->setTitle("Shown");
    row()->setSubtitle("below");
    row()->setActive(true);
    row()->setDefault(true);
    const std::unique_ptr<ProfileNameListWidget> copy(window.item(0)->clone());
    EXPECT_NE(copy->getProfileName(), row());
    EXPECT_EQ(copy->getProfileName()->getProfileSettings(), row()->getProfileSettings());
    EXPECT_EQ(copy->getProfileName()->getTitle(), "Shown");
    EXPECT_EQ(copy->getProfileName()->getSubtitle(), "below");
    EXPECT_TRUE(copy->getProfileName()->getActiveStatus());
    EXPECT_TRUE(copy->getProfileName()->getDefaultStatus());
    EXPECT_EQ(childNamed<QPushButton>(copy->getProfileName(), "activeProfileButton")->toolTip(),
              "Active");
    EXPECT_EQ(childNamed<QPushButton>(copy->getProfileName(), "defaultProfileButton")->toolTip(),
              "Default");
    EXPECT_EQ(copy->sizeHint(), QSize(0, 46));
}

TEST_F(ProfileNameTest, ItemsGoWhereTheyAreTold)
{
    window.add("Last");
    const auto put = [this](const char* title,
                            const std::function<void(ProfileNameListWidget*)>& into) {
        ProfileNameListWidget* item = window.item(0)->clone();
        item->getProfileName()->setTitle(title);
        into(item);
    };
    put("front", [](ProfileNameListWidget* item) { item->prependToList(); });
    put("back", [](ProfileNameListWidget* item) { item->appendToList(); });
    put("middle", [](ProfileNameListWidget* item) { item->insertInList(2); });
    EXPECT_EQ(window.titles(), QStringList({"front", "Torch", "middle", "Last", "back"}));
}

TEST_F(ProfileNameTest, ButtonsSayWhichProfileTheyBelongTo)
{
    row()->setTitle("Torch 2");
    EXPECT_EQ(childNamed<QPushButton>(row(), "activeProfileButton")->accessibleName(),
              "Active: Torch 2");
    EXPECT_EQ(childNamed<QPushButton>(row(), "defaultProfileButton")->accessibleName(),
              "Default: Torch 2");
    EXPECT_EQ(childNamed<QPushButton>(row(), "deleteProfileButton")->accessibleName(),
              "Delete: Torch 2");
}
