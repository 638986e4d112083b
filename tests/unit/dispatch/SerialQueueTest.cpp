#include "platform/dispatch/SerialQueue.h"

#include "platform/dispatch/SystemDispatcher.h"

#include <gmock/gmock.h>

#include <future>
#include <vector>

namespace tarnwick::dispatch {
namespace {

TEST(SerialQueue, RunsOneAfterTheOtherInOrderOnAQueueOfManyThreads) {
    SystemDispatcher dispatcher;
    SerialQueue queue(dispatcher.globalQueue(QualityOfService::Background));
    std::atomic<int> running = 0;
    std::vector<int> order;
    std::promise<void> done;
    for (int i = 0; i < 200; ++i) {
        queue.async([&, i] {
            EXPECT_EQ(++running, 1);
            order.push_back(i);
            if (i == 100)
                queue.async([&] { done.set_value(); }); // goes behind those that wait
            --running;
        });
    }
    done.get_future().wait();
    ASSERT_EQ(order.size(), 200u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(SerialQueue, FinishesWhatItsTargetHasDropped) {
    SystemDispatcher dispatcher;
    SerialQueue queue(dispatcher.globalQueue(QualityOfService::Background));
    std::promise<void> started;
    std::vector<int> order;
    queue.async([&] {
        started.set_value();
        dispatcher.sleepFor(std::chrono::hours(1)); // until the shutdown
        order.push_back(1);
    });
    queue.async([&] { order.push_back(2); });
    queue.async([&] { order.push_back(3); });
    started.get_future().wait();
    dispatcher.shutDown();
    queue.finish();
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 3));
}

} // namespace
} // namespace tarnwick::dispatch
