#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "caldav/dav_visit.h"
#include "exchange/calendar_text.h"

namespace orlune {

/// Which events a calendar-query asks for (RFC 4791, section 9.7).
class ObjectFilter {
 public:
  /// Of a "filter" element. Throws DavError: valid-filter, supported-filter, supported-collation.
  explicit ObjectFilter(const XmlElement& filter);

  /// Whether there is nothing that it lets through, such as tasks.
  bool IsForNone() const { return isForNone_; }
  /// Whether `Admits` looks into the text.
  bool NeedsText() const { return !properties_.empty(); }
  /// The days to load, of the server's zone.
  ObjectChoice Choice(const CalendarText& texts) const;
  bool Admits(const SharedObject& object, std::string_view text, const CalendarText& texts) const;

 private:
  void ReadComponent(const XmlElement& component);
  void ReadEvent(const XmlElement& event);
  void ReadProperty(const XmlElement& property);

  bool isForNone_ = false;
  bool hasEvent_ = false;
  std::optional<UtcPeriod> period_;
  std::vector<PropertyFilter> properties_;
};

}  // namespace orlune
