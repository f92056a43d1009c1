#include "pages/sharing/sharing_links.h"

#include "base/text.h"
#include "exchange/participant.h"
#include "request/visit.h"

namespace orlune {

Html Typed(std::string_view text) {
  return Html("{}", OptionLabel(WithReferencesShown(text)));
}

Html CalendarLabel(const SharedCalendar& calendar) {
  if (calendar.IsGroupView()) return Html("-{}-", OptionLabel(calendar.FriendlyName));
  if (calendar.IsOwn) return Html("{}", OptionLabel(calendar.FriendlyName));
  return Html("[{}]", OptionLabel(calendar.FriendlyName));
}

std::string SiteAddress::ForDevices() const {
  return (Host.empty() ? "" : Scheme + "://" + Host) + PagePath + "/dav/";
}

std::string SiteAddress::OfFeed(std::string_view secret) const {
  return (Host.empty() ? "" : Scheme + "://" + Host) + PagePath + "/feed/" + std::string(secret) + ".ics";
}

std::string SiteAddress::OfFeedInProgram(std::string_view secret) const {
  return Host.empty() ? "" : "webcal://" + Host + PagePath + "/feed/" + std::string(secret) + ".ics";
}

SiteAddress SiteAddressOf(const Visit& visit) {
  return {visit.Request.ServerVariable("HTTPS") == "on" ? "https" : "http",
          std::string(visit.Request.ServerVariable("HTTP_HOST")), visit.Context.Hosting.ScriptName};
}

bool IsSafeForPasswords(const Visit& visit) {
  const std::string_view address = visit.Request.ServerVariable("REMOTE_ADDR");
  return visit.Request.ServerVariable("HTTPS") == "on" || address.starts_with("127.") || address == "::1";
}

}  // namespace orlune
