#include "icalendar/icalendar_text.h"

#include "base/configuration_error.h"
#include "icalendar/calendar_queries.h"
#include "icalendar/line_writer.h"
#include "icalendar/object_merger.h"
#include "icalendar/object_reader.h"
#include "icalendar/object_writer.h"
#include "icalendar/time_zones.h"

namespace orlune {

IcalendarText::IcalendarText(std::string_view zoneName) : zone_(FindNamedZone(zoneName)) {
  if (!zone_)
    throw ConfigurationError(
        "time_zone: \"" + std::string(zoneName) +
        "\" is not a time zone of this machine (expected a name such as Europe/Helsinki)");
}

std::string IcalendarText::MachineZone() {
  return MachineZoneName();
}

std::string IcalendarText::ObjectText(const CalendarObject& object, const Week& week) const {
  if (object.KeptText.empty()) return ObjectWriter(*zone_).CalendarOf(object, week);
  return object.IsAsKept ? object.KeptText : ObjectMerger(*zone_).Merged(object, week);
}

std::string IcalendarText::FileBegin(std::string_view calendarName) const {
  std::string text(kCalendarBegin);
  const std::string name = EscapedText(calendarName);
  AppendLine(text, "NAME:", name);
  AppendLine(text, "X-WR-CALNAME:", name);
  text += "REFRESH-INTERVAL;VALUE=DURATION:PT1H\r\nX-PUBLISHED-TTL:PT1H\r\n";
  return text + zone_->Definition;
}

std::string IcalendarText::FileEntry(const CalendarObject& object, const Week& week) const {
  const std::string kept = object.KeptText.empty() ? "" : ObjectText(object, week);
  return ObjectWriter(*zone_).EntryOf(object, week, kept);
}

std::string IcalendarText::FileEnd() const {
  return std::string(kCalendarEnd);
}

PlannedObject IcalendarText::ReadObject(std::string_view text, const ReadingSettings& settings) const {
  return ObjectReader(*zone_, settings).ReadObject(text);
}

PlannedFile IcalendarText::ReadFile(std::string_view text, const ReadingSettings& settings) const {
  return ObjectReader(*zone_, settings).ReadFile(text);
}

std::string IcalendarText::Expanded(std::string_view text, const UtcPeriod& period) const {
  return ExpandedText(text, period, *zone_);
}

bool IcalendarText::Matches(std::string_view text, std::span<const PropertyFilter> filters) const {
  return HasProperties(text, filters);
}

std::string IcalendarText::FreeBusyText(const UtcPeriod& period, std::span<const BusyPeriod> busy) const {
  return FreeBusyCalendar(period, busy);
}

DateTime IcalendarText::LocalTime(std::chrono::sys_seconds moment) const {
  return zone_->Offsets.Local(moment);
}

std::chrono::sys_seconds IcalendarText::Moment(const DateTime& local) const {
  return zone_->Offsets.Moment(local);
}

std::string_view IcalendarText::ZoneName() const {
  return zone_->Name;
}

}  // namespace orlune
