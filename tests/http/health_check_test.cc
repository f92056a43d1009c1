#include "http/health_check.h"

#include <array>
#include <atomic>
#include <future>

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

constexpr std::chrono::hours kForever{1};

TEST(HealthCheck, ProbesOnceForAllWhoAsk) {
  std::atomic<int> probes = 0;
  std::promise<void> released;
  const std::shared_future<void> release = released.get_future().share();
  HealthCheck check(
      [&] {
        ++probes;
        release.wait();
        return true;
      },
      {kForever, kForever});
  std::array<std::future<bool>, 8> answers;
  for (std::future<bool>& answer : answers)
    answer = std::async(std::launch::async, [&check] { return check.IsHealthy(); });
  released.set_value();
  for (std::future<bool>& answer : answers) EXPECT_TRUE(answer.get());
  EXPECT_TRUE(check.IsHealthy());
  EXPECT_EQ(probes, 1);
}

TEST(HealthCheck, ProbesAnewWhenTheAnswerIsOld) {
  std::atomic<bool> isWell = false;
  HealthCheck check([&isWell] { return isWell.load(); }, {std::chrono::milliseconds(0), kForever});
  EXPECT_FALSE(check.IsHealthy());
  isWell = true;
  EXPECT_TRUE(check.IsHealthy());
  isWell = false;
  EXPECT_FALSE(check.IsHealthy());
}

TEST(HealthCheck, DoesNotWaitForAProbeThatHangs) {
  std::atomic<int> probes = 0;
  std::promise<void> released;
  const std::shared_future<void> release = released.get_future().share();
  HealthCheck check(
      [&] {
        ++probes;
        release.wait();
        return true;
      },
      {std::chrono::milliseconds(0), std::chrono::milliseconds(20)});
  EXPECT_FALSE(check.IsHealthy());
  EXPECT_FALSE(check.IsHealthy());
  EXPECT_EQ(probes, 1);
  released.set_value();
  while (!check.IsHealthy()) std::this_thread::yield();
}

}  // namespace
}  // namespace orlune::testing
