#include "base/quality_values.h"

#include <algorithm>
#include <optional>

namespace orlune {
namespace {

constexpr std::size_t kMostItems = 100;

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Cuts `text` at the first `separator` and returns what is before it.
std::string_view TakeUntil(std::string_view& text, char separator) {
  const std::size_t end = text.find(separator);
  const std::string_view taken = text.substr(0, end);
  text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  return Trimmed(taken);
}

/// "1", "0.8", "0.805".
std::optional<int> ParseWeight(std::string_view text) {
  if (text.empty() || text.size() > 5 || (text[0] != '0' && text[0] != '1')) return std::nullopt;
  if (text.size() > 1 && text[1] != '.') return std::nullopt;
  int weight = (text[0] - '0') * 1000;
  int unit = 100;
  for (const char digit : text.substr(std::min<std::size_t>(text.size(), 2))) {
    if (digit < '0' || digit > '9') return std::nullopt;
    weight += (digit - '0') * unit;
    unit /= 10;
  }
  return weight <= 1000 ? std::optional(weight) : std::nullopt;
}

/// The weight among the parameters of an item, which are separated by ";".
std::optional<int> WeightIn(std::string_view parameters) {
  while (!parameters.empty()) {
    const std::string_view parameter = TakeUntil(parameters, ';');
    if (parameter.starts_with("q=") || parameter.starts_with("Q=")) return ParseWeight(parameter.substr(2));
  }
  return 1000;
}

}  // namespace

std::vector<WeightedItem> ParseQualityValues(std::string_view header) {
  std::vector<WeightedItem> items;
  while (!header.empty() && items.size() < kMostItems) {
    std::string_view parameters = TakeUntil(header, ',');
    const std::string_view name = TakeUntil(parameters, ';');
    const std::optional<int> weight = WeightIn(parameters);
    if (!name.empty() && weight) items.push_back({name, *weight});
  }
  return items;
}

}  // namespace orlune
