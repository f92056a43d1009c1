#include "icalendar/zone.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text.h"
#include "exchange/calendar_text.h"
#include "icalendar/time_values.h"

namespace orlune {

using std::chrono::seconds;
using std::chrono::sys_seconds;

namespace {

/// The Gregorian calendar repeats after 400 years, and so do offsets that follow its rules.
constexpr std::chrono::days kGregorianCycle{146'097};
constexpr Date kLastTransition = std::chrono::year{2439} / 12 / 31;
constexpr std::size_t kMostTransitions = 5'000;

seconds ReadOffset(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::string_view digits = text.empty() ? text : text.substr(1);
  if ((!isNegative && !text.starts_with('+')) || !IsDigits(digits) ||
      (digits.size() != 4 && digits.size() != 6))
    throw InvalidCalendarText(TextFault::kInvalidText, "A time zone has an offset that is none.");
  const int number = WholeNumber(digits).value_or(0) * (digits.size() == 4 ? 100 : 1);
  const seconds offset =
      std::chrono::hours{number / 10'000} + std::chrono::minutes{number / 100 % 100} + seconds{number % 100};
  return isNegative ? -offset : offset;
}

sys_seconds AsUtc(const DateTime& local) {
  return sys_seconds{local.Day} + local.Time;
}

/// Of dates before 1900, which VTIMEZONEs of old zones begin with, the first day of 1900.
CivilValue ReadOnset(std::string_view text) {
  const auto year = WholeNumber(text.substr(0, 4));
  if (year && *year < 1900) return {{kFirstDayOfText, {}}, false, false};
  return ReadCivilValue(text);
}

}  // namespace

Zone::Zone(const Component& definition, WorkBudget& budget) {
  for (const Component& observance : definition.Children) {
    if (observance.Is("STANDARD") || observance.Is("DAYLIGHT")) AddObservance(observance, budget);
  }
  if (transitions_.empty()) throw InvalidCalendarText(TextFault::kInvalidText, "A time zone is empty.");
  std::ranges::stable_sort(transitions_, {}, &Transition::Begin);
  for (const Component& observance : definition.Children) {
    const sys_seconds begin = AsUtc(ReadOnset(observance.ValueOf("DTSTART")).Time);
    if (begin - ReadOffset(observance.ValueOf("TZOFFSETFROM")) == transitions_.front().Begin)
      first_ = ReadOffset(observance.ValueOf("TZOFFSETFROM"));
  }
}

void Zone::AddObservance(const Component& observance, WorkBudget& budget) {
  const seconds from = ReadOffset(observance.ValueOf("TZOFFSETFROM"));
  const seconds to = ReadOffset(observance.ValueOf("TZOFFSETTO"));
  const DateTime begin = ReadOnset(observance.ValueOf("DTSTART")).Time;
  const auto add = [&](const DateTime& local) {
    if (transitions_.size() == kMostTransitions)
      throw InvalidCalendarText(TextFault::kInvalidText, "A time zone has too many changes.");
    transitions_.push_back({AsUtc(local) - from, to});
  };
  add(begin);
  for (const ContentLine& line : observance.Lines) {
    if (EqualsIgnoringAsciiCase(line.Name, "RDATE")) {
      for (const std::string_view item : ValueItems(line.Value)) {
        const CivilValue value = ReadOnset(item);
        add(value.IsUtc ? After(value.Time, from) : value.Time);
      }
    } else if (EqualsIgnoringAsciiCase(line.Name, "RRULE")) {
      Recurrence rule(line.Value);
      if (rule.HasUntil() && rule.IsUntilUtc()) rule.SetUntil(After(rule.Until(), from));
      for (const DateTime& time : rule.Expand(begin, kLastTransition, kMostTransitions, budget).Times)
        if (time != begin) add(time);
    }
  }
}

seconds Zone::OffsetAt(sys_seconds moment) const {
  while (moment > sys_seconds{kLastTransition}) moment -= kGregorianCycle;
  const auto after = std::ranges::upper_bound(transitions_, moment, {}, &Transition::Begin);
  return after == transitions_.begin() ? first_ : std::prev(after)->Offset;
}

DateTime Zone::Local(sys_seconds moment) const {
  const sys_seconds local = moment + OffsetAt(moment);
  const Date day = std::chrono::floor<std::chrono::days>(local);
  return {day, local - day};
}

bool Zone::IsShownOnce(const DateTime& local) const {
  const sys_seconds asUtc = AsUtc(local);
  const seconds before = OffsetAt(asUtc - std::chrono::days{1});
  const seconds after = OffsetAt(asUtc + std::chrono::days{1});
  if (before == after) return true;
  return (OffsetAt(asUtc - before) == before) != (OffsetAt(asUtc - after) == after);
}

sys_seconds Zone::Moment(const DateTime& local) const {
  const sys_seconds asUtc = AsUtc(local);
  const seconds before = OffsetAt(asUtc - std::chrono::days{1});
  const seconds after = OffsetAt(asUtc + std::chrono::days{1});
  // The larger offset gives the earlier moment. A time that neither gives back is in a gap, and counts with
  // the offset before it.
  for (const seconds offset : {std::max(before, after), std::min(before, after)}) {
    if (OffsetAt(asUtc - offset) == offset) return asUtc - offset;
  }
  return asUtc - before;
}

}  // namespace orlune
