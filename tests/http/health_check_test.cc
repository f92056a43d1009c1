#include "http/health_check.h"

#include <array>
#include <atomic>
#include <future>

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

constexpr std::chrono::hours kForever{1};

/// A probe that succeeds as soon as the test releases it.
struct HeldProbe {
  std::atomic<int> Count = 0;
  std::promise<void> Released;
  std::shared_future<void> Release = Released.get_future().share();

  bool operator()() {
    ++Count;
    Release.wait();
    return true;
  }
};

TEST(HealthCheck, ProbesOnceForAllWhoAsk) {
  HeldProbe probe;
  HealthCheck check(std::ref(probe), {kForever, kForever});
  std::array<std::future<bool>, 8> answers;
  for (std::future<bool>& answer : answers)
    answer = std::async(std::launch::async, [&check] { return check.IsHealthy(); });
  probe.Released.set_value();
  for (std::future<bool>& answer : answers) EXPECT_TRUE(answer.get());
  EXPECT_TRUE(check.IsHealthy());
  EXPECT_EQ(probe.Count, 1);
}

TEST(HealthCheck, ProbesAnewWhenTheAnswerIsOld) {
  std::atomic<bool> isWell = false;
  HealthCheck check([&isWell] { return isWell.load(); }, {std::chrono::milliseconds(0), kForever});
  for (const bool expected : {false, true, false}) {
    isWell = expected;
    EXPECT_EQ(check.IsHealthy(), expected);
  }
}

TEST(HealthCheck, DoesNotWaitForAProbeThatHangs) {
  HeldProbe probe;
  HealthCheck check(std::ref(probe), {std::chrono::milliseconds(0), std::chrono::milliseconds(20)});
  EXPECT_FALSE(check.IsHealthy());
  EXPECT_FALSE(check.IsHealthy());
  EXPECT_EQ(probe.Count, 1);
  probe.Released.set_value();
  while (!check.IsHealthy()) std::this_thread::yield();
}

}  // namespace
}  // namespace orlune::testing
