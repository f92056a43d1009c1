#pragma once

#include <string>

#include "base/week.h"
#include "exchange/calendar_object.h"
#include "icalendar/time_zones.h"

namespace orlune {

/// Writes objects as text. Thread-safe.
class ObjectWriter {
 public:
  /// `zone` outlives it.
  explicit ObjectWriter(const NamedZone& zone) : zone_(zone) {}

  /// A calendar with the one object; "" when it has no days.
  std::string CalendarOf(const CalendarObject& object, const Week& week) const;
  /// Its events for a file, in which no event lists days. `kept` is the text that a client has of it, or "":
  /// what rows cannot say comes from there.
  std::string EntryOf(const CalendarObject& object, const Week& week, const std::string& kept) const;

 private:
  std::string RowsOf(const CalendarObject& object, const Week& week) const;
  void AppendFileRow(std::string& text, const CalendarObject& object, const ObjectEvent& row,
                     const Week& week, const Component* kept) const;

  const NamedZone& zone_;
};

/// The lines with which each calendar begins, its zones excepted.
inline constexpr std::string_view kCalendarBegin =
    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Orlune//Orlune//EN\r\n";
inline constexpr std::string_view kCalendarEnd = "END:VCALENDAR\r\n";

}  // namespace orlune
