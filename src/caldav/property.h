#pragma once

#include <span>
#include <string>
#include <string_view>

#include "caldav/dav_visit.h"

namespace orlune {

/// What has properties.
struct Resource {
  DavAddress Address{};
  const SharedCalendar* Calendar = nullptr;  ///< of a calendar or object
  const SharedObject* Object = nullptr;      ///< of an object
  std::string_view Text{};                   ///< of an object, where the properties asked for need it
};

/// A property, and what it says of a resource.
struct Property {
  std::string_view Name;  ///< with its prefix
  /// Appends the value; false when the resource has no such property. Null for what all calendars share.
  bool (*Write)(const DavVisit& visit, const Resource& resource, std::string& xml);
  std::string_view OfCalendars{};
  bool IsInAll = false;
  bool NeedsText = false;

  bool WriteTo(const DavVisit& visit, const Resource& resource, std::string& xml) const {
    if (Write != nullptr) return Write(visit, resource, xml);
    if (resource.Address.Place != Place::kCalendar) return false;
    xml += OfCalendars;
    return true;
  }
  std::string_view LocalName() const { return Name.substr(Name.find(':') + 1); }
  std::string_view Namespace() const {
    if (Name.starts_with("D:")) return kDav;
    if (Name.starts_with("C:")) return kCalDav;
    return Name.starts_with("CS:") ? kCalendarServer : kApple;
  }
};

/// All properties that something has.
std::span<const Property> KnownProperties();

inline constexpr std::string_view kCalendarType = "text/calendar; charset=utf-8; component=VEVENT";

}  // namespace orlune
