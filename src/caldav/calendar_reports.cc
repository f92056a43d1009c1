#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "caldav/dav_error.h"
#include "caldav/object_filter.h"
#include "caldav/object_responses.h"
#include "caldav/report.h"
#include "caldav/sync_token.h"
#include "exchange/change_log.h"

namespace orlune {
namespace {

std::vector<SharedObject> Load(const DavVisit& visit, const ObjectChoice& choice = {}) {
  return LoadObjects(visit.Database, visit.Tools, CalendarOf(visit), choice);
}

/// The names in the calendar that `report` asks for; links to anything else get their response at once.
std::unordered_set<std::string> NamesIn(const DavVisit& visit, const XmlElement& report,
                                        ObjectResponses& responses) {
  std::unordered_set<std::string> names;
  for (const XmlElement& link : report.Children) {
    if (!link.Is(kDav, "href")) continue;
    const auto address = visit.Links.Read(TrimBlanks(link.Text));
    const bool isHere = address && address->Place == Place::kObject &&
                        EqualIgnoringCase(address->User, visit.Address.User) &&
                        EqualIgnoringCase(address->Calendar, visit.Address.Calendar);
    if (isHere) {
      names.insert(address->Object);
    } else {
      responses.AddMissingLink(link.Text);
    }
  }
  return names;
}

/// Adds the objects of these names; those that there are none of, as missing.
void AddNamed(const DavVisit& visit, std::unordered_set<std::string> names, ObjectResponses& responses) {
  ObjectChoice choice;
  choice.Names = {names.begin(), names.end()};
  std::ranges::sort(*choice.Names);
  if (!names.empty()) {
    for (const SharedObject& object : Load(visit, choice)) {
      if (names.erase(object.Object.Name) > 0) responses.Add(object);
    }
  }
  for (const std::string& name : *choice.Names) {
    if (names.contains(name)) responses.AddMissing(name);
  }
}

void CheckLimit(const XmlElement& report, std::size_t count) {
  const XmlElement* limit = report.Find(kDav, "limit");
  const XmlElement* results = limit == nullptr ? nullptr : limit->Find(kDav, "nresults");
  if (results == nullptr) return;
  const auto most = WholeNumber<std::size_t>(TrimBlanks(results->Text));
  if (most && *most < count)
    throw DavError(507, "There are more changes than asked for; ask without a limit.",
                   "<D:number-of-matches-within-limits/>");
}

/// Whether an event of the object's text has the property with this value, which rows have no place for.
bool Says(const SharedObject& object, const CalendarText& texts, const char* property, const char* value) {
  if (object.Object.KeptText.empty()) return false;
  const PropertyFilter filter{.Name = property, .Text = value};
  return texts.Matches(object.Object.KeptText, {&filter, 1});
}

/// The times at which the object keeps its owner from something else (RFC 4791, section 7.10).
void AddBusyTimes(const SharedObject& object, const CalendarText& texts, const UtcPeriod& period,
                  std::vector<BusyPeriod>& busy) {
  if (Says(object, texts, "TRANSP", "TRANSPARENT") || Says(object, texts, "STATUS", "CANCELLED")) return;
  const bool isTentative = Says(object, texts, "STATUS", "TENTATIVE");
  for (BusyPeriod span : SpansIn(object, texts, period, kMostDaysOfObject)) {
    if (span.IsTransparent) continue;
    span.IsTentative |= isTentative;
    busy.push_back(span);
  }
}

}  // namespace

ReplyMessage QueryCalendar(const DavVisit& visit, const XmlElement& report) {
  CalendarOf(visit);
  const XmlElement* filterElement = report.Find(kCalDav, "filter");
  if (filterElement == nullptr) throw DavError(403, "A query has a filter.", "<C:valid-filter/>");
  const ObjectFilter filter(*filterElement);
  const PropertyWish wish = PropertyWish::OfReport(report);
  const CalendarText& texts = visit.Tools.Texts;
  ObjectResponses responses(visit, wish);
  if (filter.IsForNone()) return responses.Reply();
  for (const SharedObject& object : Load(visit, filter.Choice(texts))) {
    std::string text;
    if (filter.NeedsText()) text = texts.ObjectText(object.Object, object.Week);
    if (!filter.Admits(object, text, texts)) continue;
    if (wish.NeedsText() && text.empty()) text = texts.ObjectText(object.Object, object.Week);
    responses.Add(object, text);
  }
  return responses.Reply();
}

ReplyMessage GetNamedEvents(const DavVisit& visit, const XmlElement& report) {
  CalendarOf(visit);
  const PropertyWish wish = PropertyWish::OfReport(report);
  ObjectResponses responses(visit, wish);
  AddNamed(visit, NamesIn(visit, report, responses), responses);
  return responses.Reply();
}

ReplyMessage SynchroniseCalendar(const DavVisit& visit, const XmlElement& report) {
  const SharedCalendar& calendar = CalendarOf(visit);
  const PropertyWish wish = PropertyWish::OfReport(report);
  const XmlElement* tokenElement = report.Find(kDav, "sync-token");
  const std::string_view url = tokenElement == nullptr ? "" : TrimBlanks(tokenElement->Text);
  ObjectResponses responses(visit, wish);
  // Each token is older than what is read after it, so nothing is ever left out.
  std::string token;
  if (url.empty()) {
    token = CurrentToken(visit.Database, visit.Tools, calendar);
    const auto objects = Load(visit);
    CheckLimit(report, objects.size());
    for (const SharedObject& object : objects) responses.Add(object);
  } else {
    const auto known = ReadSyncTokenUrl(url);
    auto changes = known ? ChangesSince(visit.Database, visit.Tools, calendar, *known) : std::nullopt;
    if (!changes) throw DavError(403, "Synchronise anew: the token is too old.", "<D:valid-sync-token/>");
    CheckLimit(report, changes->Changed.size() + changes->Removed.size());
    for (const std::string& name : changes->Removed) responses.AddMissing(name);
    AddNamed(visit, {changes->Changed.begin(), changes->Changed.end()}, responses);
    token = std::move(changes->Token);
  }
  responses.AddText("D:sync-token", SyncTokenUrl(token));
  return responses.Reply();
}

ReplyMessage TellFreeAndBusy(const DavVisit& visit, const XmlElement& report) {
  CalendarOf(visit);
  const XmlElement* range = report.Find(kCalDav, "time-range");
  if (range == nullptr)
    throw DavError(403, "A query of free and busy times has a time-range.", "<C:valid-filter/>");
  const UtcPeriod period = ReadPeriod(*range, false);
  const CalendarText& texts = visit.Tools.Texts;
  ObjectChoice choice;
  choice.First = texts.LocalTime(period.Begin).Day;
  choice.Last = texts.LocalTime(*period.End).Day;
  std::vector<BusyPeriod> busy;
  for (const SharedObject& object : Load(visit, choice)) AddBusyTimes(object, texts, period, busy);
  std::ranges::sort(busy, {}, &BusyPeriod::Begin);
  return DavReply(200, "text/calendar; charset=utf-8", texts.FreeBusyText(period, busy));
}

}  // namespace orlune
