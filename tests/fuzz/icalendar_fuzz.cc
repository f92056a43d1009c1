#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/row_text.h"
#include "fuzz/require.h"
#include "icalendar/icalendar_text.h"

namespace {

using orlune::PlannedObject;

/// The lines of an event made of bytes: each byte is a part of one.
std::string Composed(std::string_view bytes) {
  static constexpr std::string_view kParts[] = {"DTSTART:20260101T080000",
                                                "DTSTART;TZID=America/New_York:20260301T230000",
                                                "DTEND:20260102T060000",
                                                "DURATION:PT1H",
                                                "DURATION:P3D",
                                                "RRULE:FREQ=DAILY",
                                                "RRULE:FREQ=WEEKLY",
                                                "RRULE:FREQ=MONTHLY",
                                                "RRULE:FREQ=YEARLY",
                                                ";COUNT=5",
                                                ";INTERVAL=2",
                                                ";BYDAY=MO,-1FR",
                                                ";BYDAY=2TU",
                                                ";BYMONTHDAY=-1,31",
                                                ";BYMONTH=2",
                                                ";BYSETPOS=-1",
                                                ";UNTIL=20280101T000000Z",
                                                "EXDATE:20260108T080000",
                                                "RDATE:20260109T090000",
                                                "RDATE;VALUE=PERIOD:20260110T220000/PT9H",
                                                "END:VEVENT\nBEGIN:VEVENT\nUID:1",
                                                "RECURRENCE-ID:20260115T080000",
                                                "RECURRENCE-ID;RANGE=THISANDFUTURE:20260122T080000",
                                                "DTSTART;VALUE=DATE:20260101",
                                                "SUMMARY:a\\,b\\nc",
                                                "CLASS:PRIVATE",
                                                "STATUS:CANCELLED",
                                                "BEGIN:VALARM\nEND:VALARM",
                                                "=",
                                                ":",
                                                ";",
                                                ","};
  std::string text = "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:1";
  for (const char byte : bytes.substr(0, 40)) {
    const std::string_view part = kParts[static_cast<unsigned char>(byte) % std::size(kParts)];
    if (part.size() > 1 && !part.starts_with(';')) text += '\n';
    text += part;
  }
  return text + "\nEND:VEVENT\nEND:VCALENDAR\n";
}

void Check(const std::string& text) {
  static const orlune::IcalendarText kTexts("Europe/Helsinki");
  static const orlune::Week kWeek(2, "1, 7");
  static const std::vector<std::string> kTypes;
  const orlune::ReadingSettings settings{kWeek, std::chrono::year{2026} / 11 / 24, kTypes, "-"};
  try {
    const PlannedObject planned = kTexts.ReadObject(text, settings);
    Require(!planned.Events.empty());
    orlune::CalendarObject object{1, "n", planned.Uid, planned.Text, false, planned.Events};
    for (orlune::ObjectEvent& row : object.Events) row.Event = orlune::AsStored(row.Event);
    // What was read says what its text says, and so does the text when it is merged with it.
    const PlannedObject merged = kTexts.ReadObject(kTexts.ObjectText(object, kWeek), settings);
    Require(merged.Events.size() == planned.Events.size());
    for (std::size_t i = 0; i < merged.Events.size(); ++i) {
      Require(merged.Events[i].Place == planned.Events[i].Place);
      Require(merged.Events[i].Days == planned.Events[i].Days);
    }
    kTexts.FileEntry(object, kWeek);
    const orlune::Date begin = std::chrono::year{2026} / 1 / 1;
    kTexts.Expanded(text, {begin, begin + std::chrono::days{30}});
  } catch (const orlune::InvalidCalendarText&) {
    // Refused, which is an answer.
  }
}

}  // namespace

/// Every text is either refused or gives rows that its text stays true to.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {  // NOLINT
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Check(std::string(bytes));
  Check(Composed(bytes));
  return 0;
}
