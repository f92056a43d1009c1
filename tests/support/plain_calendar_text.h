#pragma once

#include <string>

#include "base/text.h"
#include "exchange/calendar_text.h"

namespace orlune::testing {

/// Texts with one event that takes one whole day, in a zone that is UTC.
class PlainCalendarText : public CalendarText {
 public:
  std::string ObjectText(const CalendarObject& object, const Week& /*week*/) const override {
    if (object.IsAsKept) return object.KeptText;
    const OL_Event& event = object.Events.front().Event;
    const std::chrono::year_month_day day(event.BeginDate);
    char date[9];
    std::snprintf(date, sizeof date, "%04d%02u%02u", int(day.year()), unsigned(day.month()),
                  unsigned(day.day()));
    return "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:" + object.Uid + "\r\nDTSTART;VALUE=DATE:" + date +
           "\r\nSUMMARY:" + event.EventName + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
  }
  std::string FileBegin(std::string_view /*name*/) const override { return "BEGIN:VCALENDAR\r\n"; }
  std::string FileEntry(const CalendarObject& /*object*/, const Week& /*week*/) const override { return ""; }
  std::string FileEnd() const override { return "END:VCALENDAR\r\n"; }

  PlannedObject ReadObject(std::string_view text, const ReadingSettings& /*settings*/) const override {
    const std::string date = Line(text, "DTSTART;VALUE=DATE:");
    if (text.find("BEGIN:VTODO") != std::string_view::npos)
      throw InvalidCalendarText(TextFault::kUnsupportedComponent, "Tasks are not kept.");
    if (date.size() != 8) throw InvalidCalendarText(TextFault::kInvalidText, "This is no event.");
    OL_Event event;
    event.EventName = Line(text, "SUMMARY:");
    event.BeginDate = event.EndDate = DayOf(date);
    return {Line(text, "UID:"), std::string(text), {{event}}, std::nullopt, {}};
  }
  PlannedFile ReadFile(std::string_view /*text*/, const ReadingSettings& /*settings*/) const override {
    return {};
  }
  std::string Expanded(std::string_view text, const UtcPeriod& /*period*/) const override {
    return "expanded " + std::string(text);
  }
  bool Matches(std::string_view text, std::span<const PropertyFilter> filters) const override {
    for (const PropertyFilter& filter : filters) {
      const std::string value = Line(text, filter.Name + ":");
      if (value.empty() != filter.IsNotDefined) return false;
      const std::string sought = filter.Text.value_or("");
      const bool has = filter.HeedsCase ? value.find(sought) != std::string::npos
                                        : ToLower(value).find(ToLower(sought)) != std::string::npos;
      if (has == filter.IsNegated) return false;
    }
    return true;
  }
  std::string FreeBusyText(const UtcPeriod& /*period*/, std::span<const BusyPeriod> busy) const override {
    return std::to_string(busy.size()) + " busy";
  }
  DateTime LocalTime(std::chrono::sys_seconds moment) const override {
    const Date day = std::chrono::floor<std::chrono::days>(moment);
    return {day, moment - day};
  }
  std::chrono::sys_seconds Moment(const DateTime& local) const override { return local.Day + local.Time; }
  std::string_view ZoneName() const override { return "Etc/UTC"; }

 private:
  static Date DayOf(std::string_view digits) {
    return std::chrono::year(*WholeNumber(digits.substr(0, 4))) / *WholeNumber(digits.substr(4, 2)) /
           *WholeNumber(digits.substr(6, 2));
  }

  static std::string Line(std::string_view text, std::string_view begin) {
    const std::size_t at = text.find(begin);
    if (at == std::string_view::npos) return "";
    text.remove_prefix(at + begin.size());
    return std::string(text.substr(0, text.find('\r')));
  }
};

}  // namespace orlune::testing
