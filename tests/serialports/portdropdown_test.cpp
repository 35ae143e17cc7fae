#include "serialports/portdropdown.h"

#include "support/fakeports.h"
#include "support/gui/widgets.h"

#include <QComboBox>

class PortDropdownTest : public ::testing::Test
{
protected:
    QStringList items() const
    {
        QStringList texts;
        for (int i = 0; i < box.count(); ++i) {
            texts.append(box.itemText(i));
        }
        return texts;
    }

    FakePorts ports{{"A", "B", "C"}};
    QComboBox box;
    PortDropdown dropdown{&box};
};

TEST_F(PortDropdownTest, ListsThePortsInReverseWithTheFirstItemSelected)
{
    dropdown.fill();
    EXPECT_EQ(items(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(box.currentText(), "C");
}

TEST_F(PortDropdownTest, WithoutPortsNothingIsSelected)
{
    ports.names.clear();
    dropdown.fill();
    EXPECT_EQ(box.count(), 0);
    EXPECT_EQ(box.currentIndex(), -1);
    EXPECT_EQ(box.currentText(), "");
}

TEST_F(PortDropdownTest, NewPortIsAddedByListingAllPortsAnew)
{
    dropdown.fill();
    ports.names = QStringList({"D", "C", "A", "B"});
    dropdown.add(FakePorts::named("D"));
    EXPECT_EQ(items(), QStringList({"B", "A", "C", "D"}));
}

TEST_F(PortDropdownTest, NewPortWithinTheOldCountIsSelected)
{
    dropdown.fill();
    ports.names = QStringList({"A", "D", "B", "C"}); // listed as C, B, D, A: index 2 of 3 old ones
    dropdown.add(FakePorts::named("D"));
    EXPECT_EQ(box.currentText(), "D");
}

TEST_F(PortDropdownTest, NewPortBeyondTheOldCountIsNotSelected)
{
    dropdown.fill();
    ports.names = QStringList({"D", "E", "A", "B", "C"}); // listed as C, B, A, E, D
    dropdown.add(FakePorts::named("E"));                  // index 3, with 3 old ones
    EXPECT_EQ(items(), QStringList({"C", "B", "A", "E", "D"}));
    EXPECT_NE(box.currentText(), "E");
    EXPECT_GE(box.currentIndex(), 0);
}

TEST_F(PortDropdownTest, InAnEmptyListTheComboBoxChooses)
{
    ports.names.clear();
    dropdown.fill();
    ports.names = QStringList({"A", "B"});
    dropdown.add(FakePorts::named("B"));
    EXPECT_EQ(items(), QStringList({"B", "A"}));
    EXPECT_EQ(box.currentText(), "A"); // the first one that came in
}

TEST_F(PortDropdownTest, ListedPortIsNotAddedTwice)
{
    dropdown.fill();
    box.setCurrentIndex(1);
    ports.names = QStringList({"X"});
    dropdown.add(FakePorts::named("A"));
    EXPECT_EQ(items(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(box.currentText(), "B");
}

TEST_F(PortDropdownTest, NamesAreComparedWithTheirCaseAndWhole)
{
    dropdown.fill();
    dropdown.remove(FakePorts::named("a"));
    dropdown.remove(FakePorts::named(""));
    EXPECT_EQ(box.count(), 3);
    ports.names = QStringList({"A", "B", "C", "a"});
    dropdown.add(FakePorts::named("a"));
    EXPECT_EQ(items(), QStringList({"a", "C", "B", "A"}));
    EXPECT_EQ(box.currentText(), "a");
}

TEST_F(PortDropdownTest, PortThatHasGoneAgainIsNotListed)
{
    dropdown.fill();
    dropdown.add(FakePorts::named("D"));
    EXPECT_EQ(items(), QStringList({"C", "B", "A"}));
}

TEST_F(PortDropdownTest, GonePortIsRemoved)
{
    dropdown.fill();
    dropdown.remove(FakePorts::named("C"));
    EXPECT_EQ(items(), QStringList({"B", "A"}));
    dropdown.remove(FakePorts::named("C"));
    EXPECT_EQ(items(), QStringList({"B", "A"}));
}
