#pragma once

#include <algorithm>
#include <set>
#include <string>

#include <libical/ical.h>

#include "base/civil_time.h"

namespace libical_days {

inline orlune::Date DayOf(const icaltimetype& time) {
  return std::chrono::year{time.year} / time.month / time.day;
}

/// The days of RDATE or EXDATE as they are written.
template <class Visit>
void ForEachDay(icalcomponent* event, icalproperty_kind kind, Visit visit) {
  for (icalproperty* property = icalcomponent_get_first_property(event, kind); property != nullptr;
       property = icalcomponent_get_next_property(event, kind)) {
    visit(DayOf(kind == ICAL_RDATE_PROPERTY ? icalproperty_get_rdate(property).time
                                            : icalproperty_get_exdate(property)));
  }
}

inline void AddRule(icalcomponent* event, icalproperty* property, orlune::Date last,
                    std::set<orlune::Date>& found) {
  icaltimetype begin = icalcomponent_get_dtstart(event);
  icalrecurrencetype rule = icalproperty_get_rrule(property);
  // The iterator compares civil times.
  if (icaltime_is_utc(rule.until) && begin.zone != nullptr)
    rule.until = icaltime_convert_to_zone(rule.until, const_cast<icaltimezone*>(begin.zone));  // NOLINT
  begin.zone = nullptr;
  rule.until.zone = nullptr;
  icalrecur_iterator* iterator = icalrecur_iterator_new(rule, begin);
  for (icaltimetype time = icalrecur_iterator_next(iterator);
       !icaltime_is_null_time(time) && DayOf(time) <= last; time = icalrecur_iterator_next(iterator)) {
    found.insert(DayOf(time));
  }
  icalrecur_iterator_free(iterator);
}

}  // namespace libical_days

/// The days up to `last` on which libical lets the events of a calendar begin, each in its own zone.
inline std::set<orlune::Date> LibicalDays(const std::string& text, orlune::Date last) {
  std::set<orlune::Date> found;
  icalcomponent* calendar = icalcomponent_new_from_string(text.c_str());
  for (icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT);
       event != nullptr; event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT)) {
    std::set<orlune::Date> days{libical_days::DayOf(icalcomponent_get_dtstart(event))};
    if (icalproperty* rule = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY); rule != nullptr)
      libical_days::AddRule(event, rule, last, days);
    libical_days::ForEachDay(event, ICAL_RDATE_PROPERTY, [&](orlune::Date day) { days.insert(day); });
    libical_days::ForEachDay(event, ICAL_EXDATE_PROPERTY, [&](orlune::Date day) { days.erase(day); });
    found.merge(days);
  }
  icalcomponent_free(calendar);
  return found;
}
