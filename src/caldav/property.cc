#include "caldav/property.h"

#include <algorithm>

#include "caldav/calendar_colours.h"
#include "caldav/sync_token.h"
#include "caldav/xml_text.h"
#include "exchange/change_log.h"

namespace orlune {
namespace {

void AppendLink(const DavVisit& visit, const DavAddress& address, std::string& xml) {
  AppendElement(xml, "D:href", visit.Links.To(address));
}

bool IsCalendar(const Resource& resource) {
  return resource.Address.Place == Place::kCalendar;
}

bool IsOwn(const Resource& resource) {
  if (resource.Calendar != nullptr) return resource.Calendar->IsOwn;
  return resource.Address.Place == Place::kHome || resource.Address.Place == Place::kPrincipal;
}

bool WriteType(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  if (resource.Object != nullptr) return true;
  xml += "<D:collection/>";
  if (resource.Address.Place == Place::kPrincipal) xml += "<D:principal/>";
  if (IsCalendar(resource)) xml += "<C:calendar/>";
  return true;
}

bool WriteDisplayName(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (resource.Object != nullptr) return false;
  if (!IsCalendar(resource) && !IsOwn(resource)) return false;
  AppendText(xml, IsCalendar(resource) ? resource.Calendar->FriendlyName : visit.Participant.FriendlyName);
  return true;
}

bool WriteUser(const DavVisit& visit, const Resource& /*resource*/, std::string& xml) {
  AppendLink(visit, {Place::kPrincipal, visit.Participant.LoginName}, xml);
  return true;
}

bool WriteUserOfPrincipal(const DavVisit& visit, const Resource& resource, std::string& xml) {
  return resource.Address.Place == Place::kPrincipal && WriteUser(visit, resource, xml);
}

bool WriteOwner(const DavVisit& visit, const Resource& resource, std::string& xml) {
  return IsOwn(resource) && WriteUser(visit, resource, xml);
}

bool WriteHome(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (resource.Address.Place != Place::kPrincipal) return false;
  AppendLink(visit, {Place::kHome, visit.Participant.LoginName}, xml);
  return true;
}

bool WritePrincipals(const DavVisit& visit, const Resource& /*resource*/, std::string& xml) {
  AppendLink(visit, {Place::kPrincipals}, xml);
  return true;
}

bool WriteReports(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  constexpr std::string_view kOfCalendar[] = {"C:calendar-query", "C:calendar-multiget", "C:free-busy-query",
                                              "D:sync-collection"};
  constexpr std::string_view kOfOthers[] = {"D:principal-property-search", "D:principal-search-property-set"};
  const auto append = [&xml](std::string_view report) {
    xml.append("<D:supported-report><D:report><").append(report).append("/></D:report></D:supported-report>");
  };
  if (IsCalendar(resource)) {
    std::ranges::for_each(kOfCalendar, append);
  } else if (resource.Object == nullptr) {
    std::ranges::for_each(kOfOthers, append);
  }
  return true;
}

/// Clients take a calendar as one that is only read when it has no right to write.
bool WriteRights(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  const auto append = [&xml](std::string_view right) {
    xml.append("<D:privilege><").append(right).append("/></D:privilege>");
  };
  append("D:read");
  append("D:read-current-user-privilege-set");
  if (resource.Calendar == nullptr) return true;
  append("C:read-free-busy");
  if (!resource.Calendar->MayChange) return true;
  for (const char* right : {"D:write", "D:write-content", "D:write-properties", "D:bind", "D:unbind"})
    append(right);
  return true;
}

bool WriteToken(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (!IsCalendar(resource)) return false;
  AppendText(xml, CurrentToken(visit.Database, visit.Tools, *resource.Calendar));
  return true;
}

bool WriteSyncToken(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (!IsCalendar(resource)) return false;
  AppendText(xml, SyncTokenUrl(CurrentToken(visit.Database, visit.Tools, *resource.Calendar)));
  return true;
}

bool WriteETag(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  if (resource.Object == nullptr) return false;
  xml.append("\"").append(resource.Object->ETag).append("\"");
  return true;
}

bool WriteContentType(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  if (resource.Object == nullptr) return false;
  xml += kCalendarType;
  return true;
}

bool WriteLength(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  if (resource.Object == nullptr) return false;
  xml += std::to_string(resource.Text.size());
  return true;
}

bool WriteText(const DavVisit& /*visit*/, const Resource& resource, std::string& xml) {
  if (resource.Object == nullptr) return false;
  AppendText(xml, resource.Text);
  return true;
}

/// The server's zone, as the one definition in a calendar of its own.
bool WriteZone(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (!IsCalendar(resource)) return false;
  AppendText(xml, visit.Tools.Texts.FileBegin("") + visit.Tools.Texts.FileEnd());
  return true;
}

bool WriteColour(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (!IsCalendar(resource)) return false;
  const std::string& colour = resource.Calendar->Colour;
  AppendText(xml, colour.empty() ? DefaultColour(visit.Participant, *resource.Calendar) : colour);
  return true;
}

bool WriteOrder(const DavVisit& visit, const Resource& resource, std::string& xml) {
  if (!IsCalendar(resource)) return false;
  const auto place = resource.Calendar - visit.Participant.Calendars.data() + 1;
  AppendText(xml, resource.Calendar->Order.empty() ? std::to_string(place) : resource.Calendar->Order);
  return true;
}

constexpr Property kProperties[] = {
    {.Name = "D:resourcetype", .Write = WriteType, .IsInAll = true},
    {.Name = "D:displayname", .Write = WriteDisplayName, .IsInAll = true},
    {.Name = "D:getetag", .Write = WriteETag, .IsInAll = true},
    {.Name = "D:getcontenttype", .Write = WriteContentType, .IsInAll = true},
    {.Name = "D:getcontentlength", .Write = WriteLength, .NeedsText = true},
    {.Name = "D:current-user-principal", .Write = WriteUser},
    {.Name = "D:principal-URL", .Write = WriteUserOfPrincipal},
    {.Name = "D:owner", .Write = WriteOwner},
    {.Name = "D:principal-collection-set", .Write = WritePrincipals},
    {.Name = "D:supported-report-set", .Write = WriteReports},
    {.Name = "D:current-user-privilege-set", .Write = WriteRights},
    {.Name = "D:sync-token", .Write = WriteSyncToken},
    {.Name = "C:calendar-home-set", .Write = WriteHome},
    {.Name = "C:calendar-user-address-set", .Write = WriteUserOfPrincipal},
    {.Name = "C:calendar-data", .Write = WriteText, .NeedsText = true},
    {.Name = "C:calendar-timezone", .Write = WriteZone},
    {"C:supported-calendar-component-set", nullptr, "<C:comp name=\"VEVENT\"/>"},
    {"C:supported-calendar-data", nullptr,
     "<C:calendar-data content-type=\"text/calendar\" version=\"2.0\"/>"},
    {"C:supported-collation-set", nullptr,
     "<C:supported-collation>i;ascii-casemap</C:supported-collation>"
     "<C:supported-collation>i;octet</C:supported-collation>"},
    {"C:max-resource-size", nullptr, "1048576"},
    {"C:max-instances", nullptr, "20000"},
    {"C:min-date-time", nullptr, "19000101T000000Z"},
    {"C:max-date-time", nullptr, "29991231T235959Z"},
    {.Name = "CS:getctag", .Write = WriteToken},
    {.Name = "A:calendar-color", .Write = WriteColour},
    {.Name = "A:calendar-order", .Write = WriteOrder},
};
static_assert(kMostObjectBytes == 1048576 && kMostDaysOfObject == 20000);

}  // namespace

std::span<const Property> KnownProperties() {
  return kProperties;
}

}  // namespace orlune
