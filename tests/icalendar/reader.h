#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "icalendar/icalendar_text.h"

inline constexpr orlune::Date kToday = std::chrono::year{2026} / 11 / 24;

/// Reads with one weekend on a fixed day.
class Reader {
 public:
  explicit Reader(std::string_view zone = "Europe/Helsinki", std::string_view weekend = "1, 7")
      : Texts(zone), Week(2, weekend) {}

  orlune::PlannedObject Read(std::string_view text, orlune::Date today = kToday) const {
    return Texts.ReadObject(text, {Week, today, types_, "(untitled)"});
  }
  orlune::PlannedFile ReadFile(std::string_view text) const {
    return Texts.ReadFile(text, {Week, kToday, types_, "(untitled)"});
  }

  const orlune::IcalendarText Texts;
  const orlune::Week Week;

 private:
  const std::vector<std::string> types_{"Holiday", "Travel"};
};

/// A calendar with one event "e@x" that has these further lines, separated by blanks.
inline std::string EventText(std::string_view lines) {
  std::string text = "BEGIN:VCALENDAR\nVERSION:2.0\nBEGIN:VEVENT\nUID:e@x\n";
  for (const char c : lines) text += c == ' ' ? '\n' : c;
  return text + "\nEND:VEVENT\nEND:VCALENDAR\n";
}
