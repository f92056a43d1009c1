#pragma once

#include <filesystem>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune::bench {

/// The user of the measured pages, a member of the groups sales and staff.
inline constexpr std::string_view kUser = "user000";
inline constexpr std::string_view kPassword = "bench";
/// Another user in the same groups.
inline constexpr std::string_view kOtherUser = "user001";

/// The date of the clock; its month is shown.
inline constexpr Date kToday{std::chrono::year{2004} / 3 / 15};

/// The title of every shown occurrence begins with it.
inline constexpr std::string_view kShownTitle = "Shown: ";
/// The number of shown occurrences, whatever the size of the file.
inline constexpr int kShownOccurrences = 60;

/// Writes `file`, unless it exists, with `eventCount` events, deterministically. They are spread over 300
/// calendars, of which 30 are in the choice list, and over ten years; nine in ten are single events, the
/// others repeat. Throws std::runtime_error.
void MakeCalendarFile(const std::filesystem::path& file, int eventCount, const RegionalSettings& regional);

/// Adds `count` messages from all other users to `user`. Throws DatabaseError.
void AddReceivedMessages(const std::filesystem::path& file, int count, const RegionalSettings& regional,
                         std::string_view user = kUser);

/// Adds `count` users who are not hidden, so that every choice list contains them. Throws DatabaseError.
void AddVisibleUsers(const std::filesystem::path& file, int count, const RegionalSettings& regional);

}  // namespace orlune::bench
