#include "support/golden_page.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/write_file.h"

namespace orlune::testing {
namespace {

std::filesystem::path FileOf(std::string_view place) {
  const std::filesystem::path name(place);
  return std::filesystem::path(ORLUNE_TESTS) / "pages" / name.parent_path() / "golden" /
         (name.filename().string() + ".html");
}

std::string Content(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The part of the line around `position`: lines of pages are long.
std::string Excerpt(std::string_view text, std::size_t lineBegin, std::size_t position) {
  constexpr std::size_t kBefore = 120;
  constexpr std::size_t kAfter = 200;
  const std::size_t begin = std::max(lineBegin, position > kBefore ? position - kBefore : 0);
  const std::size_t end = std::min({text.find('\n', position), position + kAfter, text.size()});
  const std::string excerpt(text.substr(begin, end - begin));
  return (begin > lineBegin ? "..." : "") + excerpt + (end == position + kAfter ? "..." : "");
}

}  // namespace

::testing::AssertionResult IsGoldenPage(std::string_view place, std::string_view page) {
  const std::filesystem::path file = FileOf(place);
  if (const char* update = std::getenv("ORLUNE_UPDATE_GOLDEN"); update && std::string_view(update) == "1")
    WriteFile(file, page);
  if (!std::filesystem::exists(file)) return ::testing::AssertionFailure() << file << " is missing";
  const std::string golden = Content(file);
  if (golden == page) return ::testing::AssertionSuccess();

  const auto [expected, actual] = std::mismatch(golden.begin(), golden.end(), page.begin(), page.end());
  const auto position = static_cast<std::size_t>(expected - golden.begin());
  const std::size_t lineBegin = position == 0 ? 0 : golden.rfind('\n', position - 1) + 1;
  return ::testing::AssertionFailure()
         << file.string() << ":" << std::count(golden.begin(), expected, '\n') + 1 << ":"
         << position - lineBegin + 1
         << ": the page differs\n  expected: " << Excerpt(golden, lineBegin, position)
         << "\n  actual:   " << Excerpt(page, lineBegin, position);
}

}  // namespace orlune::testing
