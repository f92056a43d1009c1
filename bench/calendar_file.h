#pragma once

#include <filesystem>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"

namespace orlune::bench {

/// Who looks at the page: a member of the groups sales and staff.
inline constexpr std::string_view kUser = "user000";
inline constexpr std::string_view kPassword = "bench";
/// Somebody else, in the same groups.
inline constexpr std::string_view kOtherUser = "user001";

/// The day on which the page is looked at; its month is the one shown.
inline constexpr Date kToday{std::chrono::year{2004} / 3 / 15};

/// Every occurrence that the page shows begins its title so.
inline constexpr std::string_view kShownTitle = "Shown: ";
/// How many the page shows, whatever the size of the file.
inline constexpr int kShownOccurrences = 60;

/// Writes `file` as a company's calendar of `eventCount` events, the same on every machine, unless it exists.
/// Each of its 300 calendars, 30 of them in the choice list, holds its share of ten years: nine events in ten
/// happen once, the others repeat. Throws std::runtime_error.
void MakeCalendarFile(const std::filesystem::path& file, int eventCount, const RegionalSettings& regional);

/// Gives `user` `count` messages of all the other users. Throws DatabaseError.
void AddReceivedMessages(const std::filesystem::path& file, int count, const RegionalSettings& regional,
                         std::string_view user = kUser);

/// Adds `count` users, all of whom stand in everybody's choice lists. Throws DatabaseError.
void AddVisibleUsers(const std::filesystem::path& file, int count, const RegionalSettings& regional);

}  // namespace orlune::bench
