#pragma once

#include <string>
#include <string_view>

#include "html/html.h"

namespace orlune {

struct PageContext;
struct SharedCalendar;
struct Visit;

/// A text that users typed, as it is.
Html Typed(std::string_view text);

/// As lists of calendars show it: a group in brackets, a group view between dashes.
Html CalendarLabel(const SharedCalendar& calendar);

/// How others reach this server.
struct SiteAddress {
  std::string Scheme;  ///< "http" or "https"
  std::string Host;    ///< with its port; "" when the browser does not tell
  std::string PagePath;

  /// "https://calendar.example/OLOrlune.asp/dav/", or the path alone.
  std::string ForDevices() const;
  std::string OfFeed(std::string_view secret) const;
  /// The same with the scheme by which browsers find a calendar program; "" without a host.
  std::string OfFeedInProgram(std::string_view secret) const;
};
SiteAddress SiteAddressOf(const Visit& visit);

/// Whether devices can log in by the way that this request came.
bool IsSafeForPasswords(const Visit& visit);

}  // namespace orlune
