#include "widgets/MessageQueue.h"

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class MessageQueueTest : public fixture::ComputerFixture {};

TEST_F(MessageQueueTest, RunsPostedWorkOnceAndInOrder) {
  MessageQueue queue({});
  std::string order;
  queue.post([&] { order += "a"; });
  queue.post([&] { order += "b"; });
  queue.doEvents();
  queue.doEvents();
  EXPECT_EQ(order, "ab");
}

TEST_F(MessageQueueTest, WorkPostedByWorkWaitsForTheNextTime) {
  MessageQueue queue({});
  int runs = 0;
  queue.post([&] { queue.post([&] { ++runs; }); });
  queue.doEvents();
  EXPECT_EQ(runs, 0);
  queue.doEvents();
  EXPECT_EQ(runs, 1);
}

TEST_F(MessageQueueTest, ManyDiscardedEntriesAreFreedPartByPart) {
  constexpr std::size_t part = MessageQueue::mostFreedAtOnce;
  MessageQueue queue({});
  const auto entry = std::make_shared<int>();
  const auto count = [&entry] { return static_cast<std::size_t>(entry.use_count()) - 1; };
  queue.discard(std::vector(2 * part, entry));
  std::unordered_map<std::size_t, std::shared_ptr<int>> table;
  for (std::size_t key = 0; key <= part; ++key) {
    table.emplace(key, entry);
  }
  queue.discard(std::exchange(table, {}));
  EXPECT_EQ(count(), 3 * part + 1);
  queue.doEvents();
  EXPECT_EQ(count(), 2 * part + 1);
  EXPECT_TRUE(queue.hasWork());
  queue.doEvents();
  queue.doEvents();
  EXPECT_EQ(count(), 1U);
  queue.doEvents();
  EXPECT_EQ(count(), 0U);
  EXPECT_FALSE(queue.hasWork());
}

TEST_F(MessageQueueTest, AFewDiscardedEntriesAreFreedAtOnce) {
  MessageQueue queue({});
  const auto entry = std::make_shared<int>();
  queue.discard(std::vector(MessageQueue::mostFreedAtOnce, entry));
  EXPECT_EQ(entry.use_count(), 1);
  EXPECT_FALSE(queue.hasWork());
}

TEST_F(MessageQueueTest, ServesTheFrontEndEachTime) {
  MessageQueue queue({});
  int served = 0;
  queue.serveHost = [&] { ++served; };
  queue.doEvents();
  queue.doEvents();
  EXPECT_EQ(served, 2);
}

TEST_F(MessageQueueTest, ATimerThatIsDueTicksOnlyIfItIsEnabled) {
  Timer timer;
  timer.interval = 0;
  int ticks = 0;
  timer.onTick = [&] { ++ticks; };
  MessageQueue queue({&timer});
  queue.doEvents();
  EXPECT_EQ(ticks, 0);
  timer.enable(true);
  queue.doEvents();
  EXPECT_EQ(ticks, 1);
  timer.enable(false);
  queue.doEvents();
  EXPECT_EQ(ticks, 1);
}

TEST_F(MessageQueueTest, ItHasWorkIfSomethingIsPostedOrATimerRuns) {
  Timer timer;
  timer.interval = 1000;
  MessageQueue queue({&timer});
  EXPECT_FALSE(queue.hasWork());
  queue.post([] {});
  EXPECT_TRUE(queue.hasWork());
  queue.doEvents();
  EXPECT_FALSE(queue.hasWork());
  timer.enable(true);
  EXPECT_TRUE(queue.hasWork());
  timer.enable(false);
  EXPECT_FALSE(queue.hasWork());
}

TEST_F(MessageQueueTest, ATimerWaitsForItsInterval) {
  Timer timer;
  timer.interval = 3600000;
  bool hasTicked = false;
  timer.onTick = [&] { hasTicked = true; };
  MessageQueue queue({&timer});
  timer.enable(true);
  queue.doEvents();
  EXPECT_FALSE(hasTicked);
}

}  // namespace
}  // namespace zelvreg
