#include "ui/history/TaskPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace
{

TEST(TaskPool, BeginsTheLatestTaskFirst)
{
    std::promise<void> begun;
    std::promise<void> released;
    std::promise<void> finished;
    std::vector<int> order;
    TaskPool pool(1);
    pool.start([&] {
        begun.set_value();
        released.get_future().wait();
    });
    begun.get_future().wait();
    for (const int task : {1, 2, 3}) {
        pool.start([&order, &finished, task] {
            order.push_back(task);
            if (task == 1)
                finished.set_value();
        });
    }
    released.set_value();
    finished.get_future().wait();
    EXPECT_EQ(order, (std::vector<int>{3, 2, 1}));
}

TEST(TaskPool, HasNoMoreThreadsThanItMay)
{
    std::promise<void> released;
    const std::shared_future<void> release = released.get_future().share();
    std::promise<void> bothBegun;
    std::atomic_int running = 0;
    TaskPool pool(2);
    for (int i = 0; i < 6; ++i) {
        pool.start([&, release] {
            if (++running == 2)
                bothBegun.set_value();
            release.wait();
        });
    }
    bothBegun.get_future().wait();
    EXPECT_EQ(running, 2);
    released.set_value();
}

TEST(TaskPool, WaitsForWhatIsBegun)
{
    std::promise<void> begun;
    std::promise<void> released;
    std::atomic_bool isDone = false;
    std::thread releaser;
    {
        TaskPool pool(1);
        pool.start([&] {
            begun.set_value();
            released.get_future().wait();
            isDone = true;
        });
        begun.get_future().wait();
        releaser = std::thread([&released] { released.set_value(); });
    }
    EXPECT_TRUE(isDone);
    releaser.join();
}

TEST(TaskPool, DoesEveryTask)
{
    constexpr int Tasks = 1000;
    std::atomic_int done = 0;
    std::promise<void> all;
    TaskPool pool(3);
    for (int i = 0; i < Tasks; ++i) {
        pool.start([&done, &all] {
            if (++done == Tasks)
                all.set_value();
        });
    }
    ASSERT_EQ(all.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

} // namespace
