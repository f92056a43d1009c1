#include "caldav/dav_visit.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text.h"
#include "caldav/dav_error.h"

namespace orlune {
namespace {

using std::chrono::sys_seconds;

DavError InvalidFilter(const std::string& sentence) {
  return {403, sentence, "<C:valid-filter/>"};
}

XmlElement ReadXmlBody(std::string_view body) {
  try {
    return ReadXml(body);
  } catch (const InvalidXml& invalid) {
    if (invalid.HasDocumentType) throw DavError(403, invalid.what(), "<D:no-external-entities/>");
    throw DavError(400, invalid.what());
  }
}

}  // namespace

XmlElement ReadBody(const DavVisit& visit, std::string_view root) {
  XmlElement body = ReadXmlBody(visit.Message.Body);
  if (!root.empty() && !body.Is(kDav, root))
    throw DavError(400, "The body is not the element \"" + std::string(root) + "\".");
  return body;
}

bool WantsMinimalReply(const DavVisit& visit) {
  return visit.Message.Headers.Find("Prefer").find("return=minimal") != std::string_view::npos ||
         visit.Message.Headers.Find("Brief") == "t";
}

const SharedCalendar& CalendarOf(const DavVisit& visit) {
  if (visit.Address.Place != Place::kCalendar || visit.Calendar == nullptr)
    throw DavError(403, "Only a calendar is asked for this.", "<D:supported-report/>");
  return *visit.Calendar;
}

SharedObject LoadObject(const DavVisit& visit) {
  ObjectChoice choice;
  choice.Names = {visit.Address.Object};
  auto objects = LoadObjects(visit.Database, visit.Tools, *visit.Calendar, choice);
  const auto found = std::ranges::find_if(
      objects, [&](const SharedObject& object) { return object.Object.Name == visit.Address.Object; });
  if (found == objects.end()) throw DavError(404, "The calendar has no such event.");
  return std::move(*found);
}

sys_seconds ReadUtcTime(std::string_view text) {
  using namespace std::chrono;
  const auto number = [&](std::size_t begin, std::size_t length) {
    const std::string_view digits = text.substr(begin, length);
    return IsDigits(digits) ? *WholeNumber(digits) : -1;
  };
  if (text.size() != 16 || text[8] != 'T' || text[15] != 'Z')
    throw InvalidFilter("A time is written as in 20260314T093000Z.");
  const year_month_day day{year{number(0, 4)} / number(4, 2) / number(6, 2)};
  const int hour = number(9, 2);
  const int minute = number(11, 2);
  const int second = number(13, 2);
  const bool isTime = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second <= 60;
  if (!day.ok() || number(0, 4) < 0 || !isTime) throw InvalidFilter("There is no such time.");
  return sys_days(day) + hours(hour) + minutes(minute) + seconds(std::min(second, 59));
}

UtcPeriod ReadPeriod(const XmlElement& element, bool maybeOpen) {
  const std::string_view start = element.Attribute("start");
  const std::string_view end = element.Attribute("end");
  if ((start.empty() && end.empty()) || (!maybeOpen && (start.empty() || end.empty())))
    throw InvalidFilter("A period has a start and an end.");
  const sys_seconds earliest = std::chrono::sys_days(std::chrono::year{1900} / 1 / 1);
  UtcPeriod period{start.empty() ? earliest : std::max(ReadUtcTime(start), earliest), std::nullopt};
  if (!end.empty()) period.End = std::max(ReadUtcTime(end), earliest);
  if (!start.empty() && !end.empty() && ReadUtcTime(start) >= ReadUtcTime(end))
    throw InvalidFilter("A period ends after its start.");
  return period;
}

}  // namespace orlune
