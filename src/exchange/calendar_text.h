#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/week.h"
#include "exchange/calendar_object.h"

namespace orlune {

/// What is wrong with a text that cannot be taken; the preconditions of RFC 4791, section 5.3.2.1.
enum class TextFault {
  kInvalidText,           ///< not iCalendar (valid-calendar-data)
  kNotOneObject,          ///< no event, or several UIDs, or a METHOD (valid-calendar-object-resource)
  kUnsupportedComponent,  ///< tasks, journals (supported-calendar-component)
  kTooManyDays,  ///< more than `kMostDaysOfObject`, or several times a day without end (max-instances)
};

/// `what()` is a sentence in English for the person at the other end.
class InvalidCalendarText : public std::runtime_error {
 public:
  InvalidCalendarText(TextFault fault, const std::string& sentence)
      : std::runtime_error(sentence), Fault(fault) {}
  const TextFault Fault;
};

inline constexpr std::size_t kMostDaysOfObject = 20'000;
inline constexpr std::size_t kMostObjectBytes = std::size_t{1} << 20U;

/// What the rows of an object do not show, though its text keeps it.
enum class Loss { kAlarms, kAttendees, kLocation, kLongText, kListedDays, kUnknownZone, kOther };

/// An object as it is to be stored.
struct PlannedObject {
  std::string Uid;
  std::string Text;                 ///< to be kept: the object alone with its time zones
  std::vector<ObjectEvent> Events;  ///< by `Place`; without number, calendar and state of suggestion
  /// For a series without end whose days are listed: the last day to which they are.
  std::optional<Date> ListedUntil;
  std::vector<Loss> Losses;  ///< each once
};

/// How texts are read for one calendar.
struct ReadingSettings {
  const orlune::Week& Week;  ///< whose weekend the rules of its events go by
  Date Today;                ///< from which days are listed ahead
  std::span<const std::string> EventTypes;
  std::string_view Untitled;  ///< the title of an event without one
};

/// What a file brings: its objects, and the components that cannot be taken.
struct RefusedComponent {
  std::string Title;     ///< as it is in the file, or ""
  std::string Sentence;  ///< why, in English
};
struct PlannedFile {
  std::vector<PlannedObject> Objects;
  std::vector<RefusedComponent> Refused;
};

/// A half-open period in UTC; without an end it never ends.
struct UtcPeriod {
  std::chrono::sys_seconds Begin;
  std::optional<std::chrono::sys_seconds> End;
};

/// A period that somebody is not free.
struct BusyPeriod {
  std::chrono::sys_seconds Begin;
  std::chrono::sys_seconds End;
  bool IsTentative = false;    ///< a suggestion that is not answered
  bool IsTransparent = false;  ///< a declined one, which leaves its owner free
};

/// A condition on one property of an event (RFC 4791, section 9.7.2).
struct PropertyFilter {
  std::string Name;
  bool IsNotDefined = false;
  std::optional<std::string> Text{};  ///< which its value contains, ignoring ASCII case
  bool IsNegated = false;             ///< which it does not contain
  bool HeedsCase = false;             ///< the text is compared byte by byte
};

/// iCalendar text (RFC 5545): written of the rows, read into rows. Times of rows are civil times of the
/// server's zone. Thread-safe.
class CalendarText {
 public:
  virtual ~CalendarText() = default;

  /// The object with its time zones, as a client gets it: `KeptText` byte for byte while `IsAsKept`; else
  /// `KeptText` with what the rows say differently, or the rows alone. Days that no rule can say are listed
  /// in RDATE. "" when it has no days.
  virtual std::string ObjectText(const CalendarObject& object, const Week& week) const = 0;

  /// A feed or file is `FileBegin`, `FileEntry` of each object, `FileEnd`. Days that no rule can say are
  /// events of their own in it, since many programs pass over RDATE. Time zones stand in the beginning.
  virtual std::string FileBegin(std::string_view calendarName) const = 0;
  virtual std::string FileEntry(const CalendarObject& object, const Week& week) const = 0;
  virtual std::string FileEnd() const = 0;

  /// The one object in `text`. Throws InvalidCalendarText.
  virtual PlannedObject ReadObject(std::string_view text, const ReadingSettings& settings) const = 0;
  /// All objects in `text`, each once by its UID, in the order of the file; components without UID get one
  /// made of what they say. Throws InvalidCalendarText when it is not iCalendar at all.
  virtual PlannedFile ReadFile(std::string_view text, const ReadingSettings& settings) const = 0;

  /// The occurrences of the object `text` in the period as events of their own in UTC (RFC 4791,
  /// section 9.6.5).
  virtual std::string Expanded(std::string_view text, const UtcPeriod& period) const = 0;
  /// Whether one of its events has all of the properties asked for.
  virtual bool Matches(std::string_view text, std::span<const PropertyFilter> filters) const = 0;
  /// A VFREEBUSY of the period (RFC 4791, section 7.10).
  virtual std::string FreeBusyText(const UtcPeriod& period, std::span<const BusyPeriod> busy) const = 0;

  /// The civil time of the server's zone, and back; a time that a change of the clocks leaves out is the one
  /// after it, and of one that comes twice the first.
  virtual DateTime LocalTime(std::chrono::sys_seconds moment) const = 0;
  virtual std::chrono::sys_seconds Moment(const DateTime& local) const = 0;
  /// The name of the server's zone, such as "Europe/Helsinki".
  virtual std::string_view ZoneName() const = 0;
};

}  // namespace orlune
