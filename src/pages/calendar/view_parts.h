#pragma once

#include <optional>
#include <string_view>

#include "base/civil_time.h"
#include "base/week.h"
#include "html/html.h"
#include "pages/calendar/view_content.h"
#include "request/page_context.h"

namespace orlune {

/// Opens a view: its form, the calendar's name if it is shown, and the title bar with `caption` and the
/// navigation bar.
Html ViewOpen(const PageContext& context, const ViewContent& content, ViewMode mode, const Html& caption);
/// Closes the view's table, its title bar and its form.
Html ViewClose(const PageContext& context);

/// The class attribute of a day's cell: "today" takes precedence over "weekend"; empty for other days.
Markup DayCellClass(const PageContext& context, const Week& week, Date date);
/// Writes the numbers of days as links to their day views. `context` must outlive it.
class DayNumberLinks {
 public:
  explicit DayNumberLinks(const PageContext& context);

  void Add(Html& page, Date date) const;

 private:
  const RegionalSettings* regional_;
  Html linkOpen_;    ///< up to the date
  Html attributes_;  ///< behind the date
};

/// A FONT tag with these colours, which the caller closes; empty when neither is a valid colour. An invalid
/// one is omitted.
Html ColourStyleOpen(std::string_view background, std::string_view foreground);
/// Adds the times of an event in the user's time format, in bold, followed by a space; nothing without times.
void AddTimeSpan(Html& page, std::string_view timeFormat, std::optional<TimeOfDay> begin,
                 std::optional<TimeOfDay> end);

}  // namespace orlune
