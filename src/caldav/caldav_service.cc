#include "caldav/caldav_service.h"

#include <algorithm>
#include <memory>

#include "base/text.h"
#include "caldav/dav_error.h"
#include "caldav/object_methods.h"
#include "caldav/propfind.h"
#include "caldav/report.h"

namespace orlune {
namespace {

struct Method {
  std::string_view Name;
  ReplyMessage (*Answer)(const DavVisit& visit);
  bool Writes = false;
  bool IsForAll = true;  ///< else for events alone
};

ReplyMessage AnswerOptions(const DavVisit& visit);

constexpr Method kMethods[] = {
    {"OPTIONS", AnswerOptions},
    {"GET", AnswerGet},
    {"HEAD", AnswerGet},
    {"PROPFIND", AnswerPropfind},
    {"PROPPATCH", AnswerProppatch, true},
    {"REPORT", AnswerReport},
    {"PUT", AnswerPut, true, false},
    {"DELETE", AnswerDelete, true},
};

std::string AllowedAt(Place place) {
  std::string allowed;
  for (const Method& method : kMethods) {
    if (!method.IsForAll && place != Place::kObject) continue;
    if (!allowed.empty()) allowed += ", ";
    allowed += method.Name;
  }
  return allowed;
}

ReplyMessage AnswerOptions(const DavVisit& visit) {
  ReplyMessage reply = DavReply(200, "", "");
  reply.Headers.emplace_back("Allow", AllowedAt(visit.Address.Place));
  return reply;
}

const Method* FindMethod(std::string_view name, Place place) {
  const auto found = std::ranges::find_if(kMethods, [&](const Method& method) {
    return method.Name == name && (method.IsForAll || place == Place::kObject);
  });
  return found == std::end(kMethods) ? nullptr : found;
}

/// Of a method that there is none of.
DavError Unanswered(std::string_view method, Place place) {
  if (method == "MKCALENDAR" || method == "MKCOL")
    return {403, "Calendars are made on the pages, not by programs.", "<C:calendar-collection-location-ok/>"};
  DavError error(405, "This address does not answer requests of this kind.");
  error.Headers.emplace_back("Allow", AllowedAt(place));
  return error;
}

bool IsUserNamed(Place place) {
  return place == Place::kPrincipal || place >= Place::kHome;
}

/// The calendar at the address, whose names become those that are stored. Throws DavError when it is not the
/// user's.
const SharedCalendar* Locate(const Participant& participant, std::string_view method, DavAddress& address) {
  const DavError missing(404, "There is nothing at this address.");
  if (IsUserNamed(address.Place) && !EqualIgnoringCase(address.User, participant.LoginName)) throw missing;
  if (!address.User.empty()) address.User = participant.LoginName;
  if (address.Calendar.empty() || method == "MKCALENDAR" || method == "MKCOL") return nullptr;
  const SharedCalendar* calendar = participant.Find(address.Calendar);
  if (calendar == nullptr && method == "PUT") throw DavError(409, "There is no such calendar.");
  if (calendar == nullptr) throw missing;
  address.Calendar = calendar->Name;
  return calendar;
}

/// Of a user who logged in under a name that may be in another case.
Participant Load(Connection& database, const std::string& name) {
  auto participant = LoadParticipant(database, name);
  if (participant && participant->LoginName != name)
    participant = LoadParticipant(database, participant->LoginName);
  if (!participant) throw DavError(403, "There is no such user any more.");
  return *std::move(participant);
}

}  // namespace

ReplyMessage CalDavService::Answer(const BranchRequest& request) const {
  try {
    return AnswerClient(request);
  } catch (const DavError& error) {
    return ErrorReply(error);
  }
}

ReplyMessage CalDavService::AnswerClient(const BranchRequest& request) const {
  if (!IsSafeFromListeners(request.Sender))
    throw DavError(403, "Passwords are only taken over HTTPS. Use an address that begins with https.");
  const RequestMessage& message = request.Message;
  const BasicCredentials credentials = CredentialsOf(message);
  const std::unique_ptr<Connection> database = parts_.Databases.Open(parts_.Login.DatabaseAddress);
  const ExchangeTools tools = parts_.Tools();
  CheckLogin(parts_.Login, tools, *database, parts_.Access, credentials, request.Sender.Address);

  auto address = ReadDavAddress(request.Rest);
  if (!address) throw DavError(404, "There is nothing at this address.");
  const Method* method = FindMethod(message.Method, address->Place);
  if (method != nullptr && method->Writes && parts_.Access == Access::kRead) throw WriteRefused();
  const Participant participant = Load(*database, credentials.Name);
  const SharedCalendar* calendar = Locate(participant, message.Method, *address);
  if (method == nullptr) throw Unanswered(message.Method, address->Place);
  const DavLinks links(request.PagePath);
  return method->Answer({message, *database, tools, participant, links, *address, calendar});
}

}  // namespace orlune
