#include "caldav/object_methods.h"

#include <optional>
#include <string>

#include "base/ascii.h"
#include "base/text.h"
#include "base/utf8.h"
#include "caldav/dav_error.h"
#include "caldav/property.h"
#include "caldav/xml_text.h"
#include "http/static_files.h"

namespace orlune {
namespace {

std::string Quoted(std::string_view tag) {
  return '"' + std::string(tag) + '"';
}

std::optional<std::string> HeaderOf(const DavVisit& visit, std::string_view name) {
  const std::string_view value = visit.Message.Headers.Find(name);
  return value.empty() ? std::nullopt : std::make_optional(std::string(value));
}

WriteCondition ConditionOf(const DavVisit& visit) {
  return {HeaderOf(visit, "If-Match"), HeaderOf(visit, "If-None-Match")};
}

const char* ConditionFor(TextFault fault) {
  switch (fault) {
    case TextFault::kInvalidText:
      return "<C:valid-calendar-data/>";
    case TextFault::kNotOneObject:
      return "<C:valid-calendar-object-resource/>";
    case TextFault::kUnsupportedComponent:
      return "<C:supported-calendar-component/>";
    case TextFault::kTooManyDays:
      return "<C:max-instances/>";
  }
  return "";
}

DavError ReadOnly(const DavVisit& visit) {
  std::string condition = "<D:need-privileges><D:resource>";
  AppendElement(condition, "D:href", visit.Links.To(visit.Address));
  condition += "<D:privilege><D:write/></D:privilege></D:resource></D:need-privileges>";
  return {403, "You may only read this.", std::move(condition)};
}

void CheckObjectAddress(const DavVisit& visit) {
  constexpr std::size_t kMostNameBytes = 255;
  if (visit.Address.Object.size() > kMostNameBytes) throw DavError(403, "The name of the event is too long.");
  if (!visit.Calendar->MayChange) throw ReadOnly(visit);
}

/// Conditions of RFC 4918, section 10.4, are not evaluated, and so never true; those of HTTP are
/// (`ConditionOf`).
void CheckHeaders(const RequestMessage& message) {
  if (!message.Headers.Find("If").empty()) throw DavError(412, "Send conditions as If-Match.");
  if (!message.Headers.Find("Content-Range").empty()) throw DavError(400, "Send the whole event.");
}

void CheckBody(const RequestMessage& message) {
  const std::string_view type = message.Headers.Find("Content-Type");
  if (!type.empty() && !EqualsIgnoringAsciiCase(TrimBlanks(type.substr(0, type.find(';'))), "text/calendar"))
    throw DavError(403, "Events are sent as text/calendar.", "<C:supported-calendar-data/>");
  if (message.Body.size() > kMostObjectBytes)
    throw DavError(403, "The event is larger than a megabyte.", "<C:max-resource-size/>");
  if (RepairUtf8(message.Body) != message.Body)
    throw DavError(403, "The event is not in UTF-8.", "<C:valid-calendar-data/>");
}

PlannedObject ReadObject(const DavVisit& visit) {
  const Week week = WeekOf(visit.Database, *visit.Calendar);
  const std::vector<std::string> types = KnownEventTypes(visit.Database);
  try {
    return visit.Tools.Texts.ReadObject(visit.Message.Body,
                                        {week, visit.Tools.Today, types, visit.Tools.Untitled});
  } catch (const InvalidCalendarText& invalid) {
    throw DavError(403, invalid.what(), ConditionFor(invalid.Fault));
  }
}

DavError UidConflict(const DavVisit& visit, const std::string& name) {
  DavAddress other = visit.Address;
  other.Object = name;
  std::string condition = "<C:no-uid-conflict>";
  if (!name.empty()) AppendElement(condition, "D:href", visit.Links.To(other));
  condition += "</C:no-uid-conflict>";
  const char* sentence = name == visit.Address.Object
                             ? "The event at this address has another UID."
                             : "The calendar has this event already, at another address.";
  return {409, sentence, std::move(condition)};
}

ReplyMessage ReplyTo(const DavVisit& visit, const WriteOutcome& outcome) {
  switch (outcome.Result) {
    case WriteResult::kCreated:
    case WriteResult::kChanged: {
      ReplyMessage reply = DavReply(outcome.Result == WriteResult::kCreated ? 201 : 204, "", "");
      if (!outcome.ETag.empty()) reply.Headers.emplace_back("ETag", Quoted(outcome.ETag));
      return reply;
    }
    case WriteResult::kDeleted:
      return DavReply(204, "", "");
    case WriteResult::kNotFound:
      throw DavError(404, "The calendar has no such event.");
    case WriteResult::kConditionFailed:
      throw DavError(412, "The event has been changed meanwhile.");
    case WriteResult::kForbidden:
      throw ReadOnly(visit);
    case WriteResult::kUidConflict:
      throw UidConflict(visit, outcome.ConflictingName);
  }
  return DavReply(500, "", "");
}

}  // namespace

ReplyMessage AnswerGet(const DavVisit& visit) {
  if (visit.Address.Place != Place::kObject)
    return DavReply(200, "text/plain; charset=utf-8",
                    "This address is for calendar programs and phones (CalDAV). Enter it there.\n");
  const SharedObject object = LoadObject(visit);
  const std::string tag = Quoted(object.ETag);
  const bool isKnown = NamesTag(visit.Message.Headers.Find("If-None-Match"), tag);
  ReplyMessage reply =
      isKnown ? DavReply(304, "", "")
              : DavReply(200, kCalendarType, visit.Tools.Texts.ObjectText(object.Object, object.Week));
  reply.Headers.emplace_back("ETag", tag);
  return reply;
}

ReplyMessage AnswerPut(const DavVisit& visit) {
  CheckObjectAddress(visit);
  CheckHeaders(visit.Message);
  CheckBody(visit.Message);
  const PlannedObject planned = ReadObject(visit);
  return ReplyTo(visit, PutObject(visit.Database, visit.Tools, *visit.Calendar, visit.Address.Object, planned,
                                  ConditionOf(visit)));
}

ReplyMessage AnswerDelete(const DavVisit& visit) {
  if (visit.Address.Place != Place::kObject) {
    std::string condition = "<D:need-privileges><D:resource>";
    AppendElement(condition, "D:href", visit.Links.To(visit.Address));
    condition += "<D:privilege><D:unbind/></D:privilege></D:resource></D:need-privileges>";
    throw DavError(403, "Calendars are deleted on the pages, not by programs.", std::move(condition));
  }
  CheckObjectAddress(visit);
  CheckHeaders(visit.Message);
  return ReplyTo(visit, DeleteObject(visit.Database, visit.Tools, *visit.Calendar, visit.Address.Object,
                                     ConditionOf(visit)));
}

}  // namespace orlune
