#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "exchange/calendar_object.h"
#include "icalendar/row_rule.h"
#include "icalendar/time_zones.h"

namespace orlune {

/// Writes rows as properties of iCalendar in the civil time of one zone.
class EventWriter {
 public:
  /// `zone` outlives it.
  explicit EventWriter(const NamedZone& zone) : zone_(zone) {}

  /// DTSTART, DTEND, RRULE, RDATE and EXDATE.
  void AppendTimes(std::string& text, const OL_Event& event, const RowRule& rule) const;
  /// The times of an event that is on one day only.
  void AppendTimesOn(std::string& text, const OL_Event& event, Date day) const;
  /// The days of several rows, one by one.
  void AppendListedTimes(std::string& text, std::span<const ObjectEvent> rows, const Week& week) const;
  /// A property with a day and the time at which the event begins, such as RECURRENCE-ID.
  void AppendBegin(std::string& text, std::string_view name, const OL_Event& event, Date day) const;
  /// SUMMARY, DESCRIPTION, CLASS, CATEGORIES, STATUS and TRANSP.
  static void AppendTexts(std::string& text, const OL_Event& event);

 private:
  std::string TimeProperty(std::string_view name, std::optional<TimeOfDay> time) const;
  std::string TimeValue(Date day, std::optional<TimeOfDay> time) const;
  void AppendDays(std::string& text, std::string_view name, const OL_Event& event,
                  std::span<const Date> dates) const;
  void AppendEnd(std::string& text, const OL_Event& event, Date day) const;

  const NamedZone& zone_;
};

/// When the event ends on the day that it begins; nothing when it has no end.
std::optional<TimeOfDay> EndTimeOf(const OL_Event& event);

}  // namespace orlune
