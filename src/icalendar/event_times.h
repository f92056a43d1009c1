#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "icalendar/content_lines.h"
#include "icalendar/recurrence.h"
#include "icalendar/time_values.h"
#include "icalendar/time_zones.h"

namespace orlune {

/// The zones that a text may name: those of the machine's database, and its own.
class TextZones {
 public:
  /// `calendars` and `server` outlive it.
  TextZones(const NamedZone& server, const std::vector<Component>& calendars);

  /// That of the server for one that nobody knows.
  const Zone& Find(std::string_view id);
  const Zone& Server() const { return server_.Offsets; }
  const Zone& Utc() const { return utc_; }
  /// Whether `Find` was asked for a zone that nobody knows since this was last called.
  bool TakeUnknown();

 private:
  const Zone* FindAnew(std::string_view id);
  const Zone* FindDefined(std::string_view id);

  const NamedZone& server_;
  const Zone utc_;
  WorkBudget budget_;
  std::map<std::string, const Component*, std::less<>> definitions_;
  std::map<std::string, const Zone*, std::less<>> found_;
  std::vector<std::shared_ptr<const NamedZone>> named_;
  std::vector<std::unique_ptr<const Zone>> own_;
  bool hasUnknown_ = false;
};

/// A point in time of a text.
struct TextTime {
  DateTime Local{};  ///< in its zone
  bool IsDate = false;
  const Zone* In = nullptr;
  std::chrono::sys_seconds Moment{};  ///< of a date, its midnight as if in UTC
};

/// How long an event takes: first what the clock shows, as from one day to the next at the same hour, then an
/// exact time.
struct EventLength {
  std::chrono::seconds ByClock{};
  std::chrono::seconds Exact{};

  bool IsNone() const { return ByClock + Exact <= std::chrono::seconds{0}; }
};

/// One occurrence of an event.
struct Instance {
  TextTime Begin;
  std::optional<EventLength> Length{};  ///< its own, from a period in RDATE
  bool IsLeftOut = false;
};

/// The times of one VEVENT.
class EventTimes {
 public:
  /// Throws InvalidCalendarText.
  EventTimes(const Component& event, TextZones& zones);

  const TextTime& Begin() const { return begin_; }
  const std::optional<TextTime>& RecurrenceId() const { return recurrenceId_; }
  bool IsThisAndFuture() const { return isThisAndFuture_; }
  bool Repeats() const { return !rules_.empty() || !added_.empty(); }
  bool HasRule() const { return !rules_.empty(); }
  bool IsEndless() const;
  /// The day of UNTIL where that alone ends the series.
  std::optional<Date> Until() const;
  /// The last day that EXDATE names.
  std::optional<Date> LastLeftOut() const;

  struct Instances {
    std::vector<Instance> All;  ///< in ascending order, those left out included
    bool IsComplete = true;
  };
  /// To the day `last`. Throws InvalidCalendarText.
  Instances Expand(Date last, WorkBudget& budget) const;

  /// Nothing for an event without an end or that ends as it begins. Where the clocks change as it begins,
  /// `Local` and `Moment` may be different times.
  std::optional<TextTime> EndOf(const Instance& instance) const;
  /// Where an occurrence of the series is moved to that this event, one for its RECURRENCE-ID and all later
  /// ones, changes.
  TextTime MovedLike(const TextTime& time) const;

 private:
  static TextTime Moved(const TextTime& time, std::chrono::seconds by);
  TextTime ReadTime(const ContentLine& line, std::string_view value, TextZones& zones) const;
  void ReadLength(const Component& event, TextZones& zones);
  void ReadAdded(const ContentLine& line, TextZones& zones);
  void ReadRule(std::string_view text, std::vector<Recurrence>& rules) const;
  TextTime AtLocal(const DateTime& local) const;
  void LeaveOut(std::vector<Instance>& instances, Date last, WorkBudget& budget) const;

  TextTime begin_;
  EventLength length_;
  std::vector<Recurrence> rules_;
  std::vector<Recurrence> exceptionRules_;
  std::vector<Instance> added_;
  std::vector<TextTime> leftOut_;
  std::optional<TextTime> recurrenceId_;
  bool isThisAndFuture_ = false;
};

}  // namespace orlune
