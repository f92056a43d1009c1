#include "caldav/report.h"

#include <algorithm>

#include "base/text.h"
#include "caldav/dav_error.h"
#include "caldav/property_wish.h"
#include "caldav/xml_text.h"

namespace orlune {
namespace {

struct Report {
  std::string_view Namespace;
  std::string_view Name;
  ReplyMessage (*Answer)(const DavVisit& visit, const XmlElement& report);
};
constexpr Report kReports[] = {
    {kCalDav, "calendar-query", QueryCalendar},
    {kCalDav, "calendar-multiget", GetNamedEvents},
    {kDav, "sync-collection", SynchroniseCalendar},
    {kCalDav, "free-busy-query", TellFreeAndBusy},
    {kDav, "principal-property-search", SearchPrincipals},
    {kDav, "principal-search-property-set", SearchedProperties},
};

std::string Lower(std::string_view text) {
  return ToLower(text);
}

/// Whether all texts that are looked for are in the user's names.
bool IsFound(const Participant& participant, const XmlElement& report) {
  const std::string names = Lower(participant.FriendlyName + "\n" + participant.LoginName);
  bool isSearched = false;
  for (const XmlElement& search : report.Children) {
    if (!search.Is(kDav, "property-search")) continue;
    isSearched = true;
    const XmlElement* match = search.Find(kDav, "match");
    if (match == nullptr || names.find(Lower(match->Text)) == std::string::npos) return false;
  }
  return isSearched;
}

}  // namespace

ReplyMessage AnswerReport(const DavVisit& visit) {
  const XmlElement body = ReadBody(visit);
  const auto found = std::ranges::find_if(
      kReports, [&](const Report& report) { return body.Is(report.Namespace, report.Name); });
  if (found == std::end(kReports))
    throw DavError(403, "There is no such report here.", "<D:supported-report/>");
  return found->Answer(visit, body);
}

ReplyMessage SearchPrincipals(const DavVisit& visit, const XmlElement& report) {
  const PropertyWish wish = PropertyWish::OfReport(report);
  std::string xml = XmlDocumentBegin("D:multistatus");
  const Resource user{{Place::kPrincipal, visit.Participant.LoginName}};
  if (IsFound(visit.Participant, report)) wish.AppendResponse(visit, user, visit.Links.To(user.Address), xml);
  AppendDocumentEnd(xml, "D:multistatus");
  return XmlReply(207, std::move(xml));
}

ReplyMessage SearchedProperties(const DavVisit& /*visit*/, const XmlElement& /*report*/) {
  std::string xml = XmlDocumentBegin("D:principal-search-property-set");
  xml +=
      "<D:principal-search-property><D:prop><D:displayname/></D:prop>"
      "<D:description xml:lang=\"en\">Name</D:description></D:principal-search-property>";
  AppendDocumentEnd(xml, "D:principal-search-property-set");
  return XmlReply(200, std::move(xml));
}

}  // namespace orlune
