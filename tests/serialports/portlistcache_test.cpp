#include "serialports/portlistcache.h"

#include "support/fakeports.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

class PortListCacheTest : public ::testing::Test
{
protected:
    static constexpr int atOnce = 0; ///< every list counts as settled
    static constexpr int never = 3600 * 1000;

    PortListCache cacheThatSettles(int settlingTime)
    {
        return PortListCache([this] { return state; },
                             [this] {
                                 ++enumerations;
                                 QList<QextPortInfo> ports;
                                 for (const QString& name : qAsConst(names)) {
                                     ports.append(FakePorts::named(name));
                                 }
                                 if (onEnumerated) {
                                     onEnumerated();
                                 }
                                 return ports;
                             },
                             settlingTime);
    }

    static QStringList namesFrom(PortListCache& cache)
    {
        QStringList found;
        const QList<QextPortInfo> ports = cache.ports();
        for (const QextPortInfo& port : ports) {
            found.append(port.portName);
        }
        return found;
    }

    QByteArray state = "1";
    QStringList names{"A"};
    int enumerations = 0;
    std::function<void()> onEnumerated;
};

TEST_F(PortListCacheTest, AsksOnceAsLongAsNothingChanges)
{
    PortListCache cache = cacheThatSettles(atOnce);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(namesFrom(cache), QStringList("A"));
    }
    EXPECT_EQ(enumerations, 1);
}

TEST_F(PortListCacheTest, ChangeIsThereAtTheNextLook)
{
    PortListCache cache = cacheThatSettles(atOnce);
    cache.ports();
    state = "2";
    names = QStringList({"A", "B"});
    EXPECT_EQ(namesFrom(cache), QStringList({"A", "B"}));
    state = "1"; // as it was before
    names = QStringList("A");
    EXPECT_EQ(namesFrom(cache), QStringList("A"));
    EXPECT_EQ(enumerations, 3);
}

TEST_F(PortListCacheTest, ChangeDuringTheEnumerationIsThereAtTheNextLook)
{
    PortListCache cache = cacheThatSettles(atOnce);
    onEnumerated = [this] { // after the list was made: it does not hold the new port
        state = "2";
        names = QStringList({"A", "B"});
    };
    EXPECT_EQ(namesFrom(cache), QStringList("A"));
    onEnumerated = {};
    EXPECT_EQ(namesFrom(cache), QStringList({"A", "B"}));
}

TEST_F(PortListCacheTest, ListIsAskedForEachTimeUntilItHasSettled)
{
    PortListCache cache = cacheThatSettles(never);
    cache.ports();
    names = QStringList({"A", "B"}); // a device that was not ready at the first call
    EXPECT_EQ(namesFrom(cache), QStringList({"A", "B"}));
    EXPECT_EQ(enumerations, 2);
}

TEST_F(PortListCacheTest, ChangeStartsTheSettlingAnew)
{
    constexpr int settlingTime = 500;
    PortListCache cache = cacheThatSettles(settlingTime);
    cache.ports();
    ASSERT_TRUE(waitFor([&] { // settled: the ports are not enumerated any more
        const int before = enumerations;
        cache.ports();
        return enumerations == before;
    }));
    QElapsedTimer timer;
    int asked = 0;
    do { // once more when the machine has paused for so long
        timer.start();
        state += '2';
        cache.ports();
        const int afterChange = enumerations;
        cache.ports();
        asked = enumerations - afterChange;
    } while (timer.elapsed() >= settlingTime);
    EXPECT_EQ(asked, 1);
}

TEST_F(PortListCacheTest, SystemThatCannotTellIsAskedEachTime)
{
    state.clear();
    PortListCache cache = cacheThatSettles(atOnce);
    cache.ports();
    names = QStringList("B");
    EXPECT_EQ(namesFrom(cache), QStringList("B"));
    EXPECT_EQ(enumerations, 2);
}
