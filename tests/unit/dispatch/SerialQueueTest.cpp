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

} // namespace
} // namespace tarnwick::dispatch
