#pragma once

#include <string_view>
#include <vector>

namespace orlune {

/// An item of a header such as "Accept-Language: de, en;q=0.8".
struct WeightedItem {
  std::string_view Name;  ///< without blanks around it; a view into the header
  int Weight;             ///< in thousandths, 0 to 1000; 0: not acceptable
};

/// The items of such a header in its order (RFC 9110, 12.4.2). Items whose weight is malformed are left out,
/// and so is what follows the hundredth item.
std::vector<WeightedItem> ParseQualityValues(std::string_view header);

}  // namespace orlune
