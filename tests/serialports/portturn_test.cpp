#include "serialports/portturn.h"

#include "serialports/portlock.h"
#include "serialports/portturns.h"
#include "support/gui/widgets.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace
{
class PortTurnTest : public ::testing::Test
{
protected:
    ~PortTurnTest() override { EXPECT_EQ(texts(), QStringList()); }

    /// A turn that counts how often it begins.
    std::unique_ptr<PortTurn> request(const QString& port, int* begun)
    {
        auto turn = std::make_unique<PortTurn>(port, "Writing profiles", nullptr);
        turn->whenFree([begun] { ++*begun; });
        return turn;
    }

    static QStringList texts() { return PortTurns::ofApplication().descriptions(); }

    int first = 0;
    int second = 0;
    int third = 0;
};
} // namespace

TEST_F(PortTurnTest, BeginsAtOnceOnAFreePort)
{
    const auto turn = request("A", &first);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(texts(), QStringList("Writing profiles through A"));
}

TEST_F(PortTurnTest, PortsAreIndependent)
{
    const auto one = request("A", &first);
    const auto other = request("a", &second);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST_F(PortTurnTest, WaitsForTheEndOfTheEarlierTurn)
{
    auto one = request("A", &first);
    const auto other = request("A", &second);
    QCoreApplication::processEvents();
    EXPECT_EQ(second, 0);
    EXPECT_EQ(texts(), QStringList({"Writing profiles through A",
                                    "Writing profiles through A (waiting for the port)"}));
    one.reset();
    EXPECT_EQ(second, 0) << "the end of the earlier turn may still be being handled";
    QCoreApplication::processEvents();
    EXPECT_EQ(second, 1);
    EXPECT_EQ(texts(), QStringList("Writing profiles through A"));
}

TEST_F(PortTurnTest, TurnsFollowEachOtherInTheOrderOfTheirRequests)
{
    auto one = request("A", &first);
    auto two = request("A", &second);
    const auto three = request("A", &third);
    one.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(second, 1);
    EXPECT_EQ(third, 0);
    two.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(third, 1);
}

TEST_F(PortTurnTest, RequestThatIsGivenUpIsPassedOver)
{
    auto one = request("A", &first);
    auto two = request("A", &second);
    const auto three = request("A", &third);
    two.reset();
    one.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(second, 0);
    EXPECT_EQ(third, 1);
}

TEST_F(PortTurnTest, RequestGivenUpBetweenTheEndAndItsBeginningPassesTheTurnOn)
{
    auto one = request("A", &first);
    auto two = request("A", &second);
    const auto three = request("A", &third);
    one.reset();
    two.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(second, 0);
    EXPECT_EQ(third, 1);
}

TEST_F(PortTurnTest, MayEndWhereItBegins)
{
    auto* turn = new PortTurn("A", "Writing profiles", nullptr);
    turn->whenFree([turn] { delete turn; });
    EXPECT_EQ(texts(), QStringList());
}

TEST_F(PortTurnTest, EveryChangeIsReported)
{
    const QSignalSpy changed(&PortTurns::ofApplication(), &PortTurns::changed);
    auto one = request("A", &first);
    const auto other = request("A", &second);
    const int before = changed.size();
    EXPECT_GT(before, 0);
    one.reset();
    QCoreApplication::processEvents();
    EXPECT_GT(changed.size(), before + 1) << "one has gone, the other has begun";
}

TEST_F(PortTurnTest, KeepsOtherProgramsFromThePortFromItsBeginningToItsEnd)
{
    auto one = request("A", &first);
    auto two = request("A", &second);
    EXPECT_FALSE(PortLock("A").isFree());
    one.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(second, 1);
    EXPECT_FALSE(PortLock("A").isFree());
    two.reset();
    EXPECT_TRUE(PortLock("A").isFree());
}

TEST_F(PortTurnTest, IsRefusedThePortThatAnotherProgramHas)
{
    const PortLock other("A");
    QStringList holders;
    PortTurn turn("A", "Writing profiles", nullptr);
    turn.whenFree([this] { ++first; }, [&](const QString& holder) { holders.append(holder); });
    QCoreApplication::processEvents();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(holders, QStringList(PortLock("A").holder()));
}

TEST_F(PortTurnTest, WaitsNoMoreWhenItIsRefused)
{
    const PortLock other("A");
    auto* turn = new PortTurn("A", "Writing profiles", nullptr);
    turn->whenFree([this] { ++first; }, [turn](const QString&) { delete turn; });
    EXPECT_EQ(texts(), QStringList());
}
