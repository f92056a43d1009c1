#include <cstdint>
#include <string_view>
#include <vector>

#include "base/dates.h"
#include "drivers/icu/icu_regional_settings.h"
#include "fuzz/require.h"

namespace {

const std::vector<orlune::RegionalSettings>& Regions() {
  static const std::vector<orlune::RegionalSettings> kRegions{
      orlune::LoadRegionalSettings("en_US"), orlune::LoadRegionalSettings("en_GB"),
      orlune::LoadRegionalSettings("fi_FI"), orlune::LoadRegionalSettings("sv_SE")};
  return kRegions;
}

}  // namespace

/// Every parsed date is in the supported range, and formatting and parsing it gives the same date.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {  // NOLINT
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const orlune::RegionalSettings& regional : Regions()) {
    if (const auto date = orlune::ParseDate(regional, text)) {
      Require(*date >= orlune::kFirstDate && *date <= orlune::kLastDate);
      Require(orlune::ParseDate(regional, orlune::FormatShortDate(regional, *date)) == date);
    }
    if (const auto moment = orlune::ParseDateTime(regional, text)) {
      Require(orlune::ParseDateTime(regional, orlune::FormatDateTime(regional, *moment)) == moment);
    }
  }
  if (const auto time = orlune::ParseTime(text)) {
    Require(*time >= orlune::TimeOfDay{0} && *time < std::chrono::hours{24});
  }
  return 0;
}
