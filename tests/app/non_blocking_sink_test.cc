#include "app/non_blocking_sink.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <regex>
#include <string>

#include <gtest/gtest.h>
#include <spdlog/logger.h>
#include <unistd.h>

namespace orlune::testing {
namespace {

std::string ReadSome(int descriptor) {
  std::array<char, 4096> piece;
  const ssize_t size = read(descriptor, piece.data(), piece.size());
  return {piece.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

TEST(NonBlockingSink, TellsHowManyLinesNobodyRead) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  auto log = std::make_unique<spdlog::logger>("test", std::make_shared<NonBlockingSink>(ends[1], 10'000));
  log->set_pattern("%v");
  constexpr std::size_t kLines = 20'000;
  for (std::size_t i = 0; i < kLines; ++i) log->info("line");
  std::string text;
  while (text.find(" lines of the log were dropped\n") == std::string::npos) {
    text += ReadSome(ends[0]);
    log->info("more");
  }
  log = nullptr;
  close(ends[1]);
  for (std::string piece = "x"; !piece.empty(); text += piece) piece = ReadSome(ends[0]);
  close(ends[0]);
  std::smatch dropped;
  ASSERT_TRUE(
      std::regex_search(text, dropped, std::regex("\n([0-9]+) lines of the log were dropped\nmore\n")));
  const std::regex line("line\n");
  const auto written = std::distance(std::sregex_iterator(text.begin(), text.end(), line), {});
  EXPECT_GE(static_cast<std::size_t>(written) + std::stoul(dropped[1]), kLines);
  EXPECT_TRUE(text.starts_with("line\nline\n"));
}

}  // namespace
}  // namespace orlune::testing
