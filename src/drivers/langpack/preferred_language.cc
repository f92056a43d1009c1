#include "drivers/langpack/preferred_language.h"

#include <algorithm>
#include <vector>

#include "base/ascii.h"
#include "base/quality_values.h"

namespace orlune {
namespace {

std::string_view PrimaryLanguage(std::string_view tag) {
  const std::string_view language = tag.substr(0, tag.find('-'));
  const bool isNorwegian = EqualsIgnoringAsciiCase(language, "no") || EqualsIgnoringAsciiCase(language, "nn");
  return isNorwegian ? "nb" : language;
}

std::optional<std::size_t> Find(std::string_view range, std::span<const std::string> tags) {
  const auto indexWhere = [&tags](const auto& matches) -> std::optional<std::size_t> {
    const auto found = std::ranges::find_if(tags, matches);
    if (found == tags.end()) return std::nullopt;
    return static_cast<std::size_t>(found - tags.begin());
  };
  const std::string_view language = PrimaryLanguage(range);
  auto found = indexWhere([&](std::string_view tag) { return EqualsIgnoringAsciiCase(tag, range); });
  if (!found)
    found = indexWhere([&](std::string_view tag) { return EqualsIgnoringAsciiCase(tag, language); });
  if (found) return found;
  return indexWhere(
      [&](std::string_view tag) { return EqualsIgnoringAsciiCase(PrimaryLanguage(tag), language); });
}

}  // namespace

std::optional<std::size_t> PreferredLanguage(std::string_view acceptLanguage,
                                             std::span<const std::string> tags) {
  std::vector<WeightedItem> ranges = ParseQualityValues(acceptLanguage);
  std::ranges::stable_sort(ranges, std::ranges::greater{}, &WeightedItem::Weight);
  for (const WeightedItem& range : ranges) {
    if (range.Weight == 0) break;
    if (const auto found = Find(range.Name, tags)) return found;
  }
  return std::nullopt;
}

}  // namespace orlune
