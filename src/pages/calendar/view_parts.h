#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/week.h"
#include "html/html.h"
#include "pages/calendar/view_mode.h"

namespace orlune {

struct Visit;

/// The name that the viewed calendar or group view is shown under; its `CalName` when it has none.
std::string CalendarDisplayName(const Visit& visit);

/// Announces to the database what every view asks beside its events.
void AnnounceViewParts(const Visit& visit);

/// Opens a view: its form, the calendar's name where the page shows it, and the title bar with `caption` and
/// the navigation bar.
Html ViewOpen(const Visit& visit, ViewMode mode, const Html& caption);
/// Closes the view's table, its title bar and its form.
Html ViewClose(const Visit& visit);

/// The class attribute of a day's cell: today wins over a weekend day; other days have none.
Markup DayCellClass(const Visit& visit, const Week& week, Date date);
/// The number of a day as a link to its day view.
Html DayNumberLink(const Visit& visit, Date date);

/// A FONT tag in the colours of a group view's calendar, to be closed unless it is empty. What does not look
/// like a colour is left out.
Html ColourStyleOpen(std::string_view background, std::string_view foreground);
/// The times of an event by the user's clock, in bold and followed by a blank; empty for one without times.
Html TimeSpanLabel(std::string_view timeFormat, std::optional<TimeOfDay> begin, std::optional<TimeOfDay> end);

}  // namespace orlune
