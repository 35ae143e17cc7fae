#include "look/screenfit.h"

#include "look/fittedfont.h"
#include "support/printing.h"
#include "support/waiting.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace
{
QRect freeArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

/// Shows the window and lets the system give it its frame and the focus.
void showActive(QWidget& window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, patience));
}

QLabel* bigLabel()
{
    auto* label = new QLabel("big");
    label->setMinimumSize(freeArea().size() + QSize(300, 200));
    return label;
}
} // namespace

class ScreenFitTest : public ::testing::Test
{
protected:
    QWidget window;
    QVBoxLayout* layout = new QVBoxLayout(&window);
};

TEST_F(ScreenFitTest, AWindowThatNeedsMoreThanTheScreenGetsItsFreeArea)
{
    layout->addWidget(bigLabel());
    new ScreenFit(&window);
    showActive(window);
    EXPECT_TRUE(contains(freeArea(), window.frameGeometry()));
    EXPECT_EQ(window.size(), window.size().boundedTo(ScreenFit::room(window)));
}

TEST_F(ScreenFitTest, AWindowThatFitsKeepsItsSize)
{
    layout->addWidget(new QLabel("small"));
    window.resize(300, 200);
    new ScreenFit(&window);
    showActive(window);
    EXPECT_EQ(window.size(), QSize(300, 200));
}

TEST_F(ScreenFitTest, WhatIsAddedLaterDoesNotPushTheWindowOffTheScreen)
{
    layout->addWidget(new QLabel("small"));
    new ScreenFit(&window);
    showActive(window);
    layout->addWidget(bigLabel());
    QCoreApplication::processEvents();
    EXPECT_LE(window.frameGeometry().width(), freeArea().width());
    EXPECT_LE(window.frameGeometry().height(), freeArea().height());
}

TEST_F(ScreenFitTest, TheUserMayMakeTheWindowLarger)
{
    layout->addWidget(new QLabel("small"));
    new ScreenFit(&window);
    showActive(window);
    const QSize acrossTwoScreens = freeArea().size() * 2;
    window.resize(acrossTwoScreens);
    layout->addWidget(new QLabel("more"));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), acrossTwoScreens);
}

TEST_F(ScreenFitTest, AWindowOfFixedSizeGetsASmallerFont)
{
    layout->addWidget(new QLabel(QString("wide ").repeated(25)));
    layout->setSizeConstraint(QLayout::SetFixedSize);
    QFont large = window.font();
    large.setPointSizeF(30);
    window.setFont(large);
    new ScreenFit(&window);
    showActive(window);
    EXPECT_TRUE(contains(freeArea(), window.frameGeometry()));
    EXPECT_LT(window.font().pointSizeF(), 30);
}

TEST_F(ScreenFitTest, TextsOfAFittedFontBecomeSmallerUntilTheyFit)
{
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(30);
    QApplication::setFont(large);
    auto* label = new QLabel(QString("wide ").repeated(15));
    layout->addWidget(label);
    new FittedFont(&window);
    new ScreenFit(&window);
    showActive(window);
    EXPECT_LE(window.frameGeometry().width(), freeArea().width());
    EXPECT_GE(label->width(), label->sizeHint().width());
    QApplication::setFont(before);
}

TEST_F(ScreenFitTest, AWindowBeyondTheEdgeIsMovedOntoTheScreenOnce)
{
    layout->addWidget(new QLabel("small"));
    window.resize(300, 200);
    window.move(freeArea().right() - 50, freeArea().bottom() - 50);
    new ScreenFit(&window);
    showActive(window);
    EXPECT_TRUE(contains(freeArea(), window.frameGeometry()));
    const QPoint atTheEdge(freeArea().right() - 50, freeArea().bottom() - 50);
    window.move(atTheEdge); // by the user
    QApplication::setActiveWindow(nullptr);
    showActive(window);
    EXPECT_EQ(window.pos(), atTheEdge);
}

TEST_F(ScreenFitTest, AWindowThatItsLayoutMakesWiderStaysOnTheScreen)
{
    auto* label = new QLabel("small");
    layout->addWidget(label);
    new ScreenFit(&window);
    showActive(window);
    window.move(freeArea().right() - window.frameGeometry().width(), 100);
    label->setMinimumWidth(freeArea().width() / 2);
    QCoreApplication::processEvents();
    EXPECT_GE(window.width(), freeArea().width() / 2);
    EXPECT_TRUE(contains(freeArea(), window.frameGeometry()));
}

TEST_F(ScreenFitTest, AMaximisedWindowIsLeftToTheSystem)
{
    layout->addWidget(new QLabel("small"));
    new ScreenFit(&window);
    window.showMaximized();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, patience));
    EXPECT_EQ(window.frameGeometry().size(), freeArea().size());
}

TEST_F(ScreenFitTest, CentresAWindowOverTheOneItBelongsTo)
{
    window.setGeometry(100, 150, 400, 300);
    showActive(window);
    auto* tool = new QWidget(&window, Qt::Window);
    auto* content = new QLabel("needs more room than the window has been given");
    content->setMinimumSize(350, 250);
    (new QVBoxLayout(tool))->addWidget(content);
    tool->resize(200, 100);
    ScreenFit::centre(tool);
    tool->show();
    const QPoint difference = tool->frameGeometry().center() - window.frameGeometry().center();
    EXPECT_LE(difference.manhattanLength(), 8); // a frame's width
}

TEST_F(ScreenFitTest, CentresNoWindowBeyondTheEdge)
{
    window.setGeometry(-150, -200, 400, 300);
    showActive(window);
    auto* tool = new QWidget(&window, Qt::Window);
    (new QVBoxLayout(tool))->addWidget(new QLabel("tool"));
    tool->resize(500, 400);
    ScreenFit::centre(tool);
    tool->show();
    EXPECT_TRUE(contains(freeArea(), tool->frameGeometry()));
}
