#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "caldav/dav_visit.h"
#include "caldav/property.h"
#include "exchange/calendar_text.h"

namespace orlune {

/// The properties that a request asks for.
class PropertyWish {
 public:
  /// Of a "propfind" element.
  static PropertyWish OfPropfind(const XmlElement& propfind);
  /// All that a client gets without naming them.
  static PropertyWish All();
  /// Of a report, in its "prop". Throws DavError (supported-calendar-data).
  static PropertyWish OfReport(const XmlElement& report);

  /// Whether `Resource::Text` is needed.
  bool NeedsText() const { return needsText_; }
  /// The period whose occurrences the text is asked for as events of their own.
  const std::optional<UtcPeriod>& Expansion() const { return expansion_; }

  /// Appends the "response" element of a resource at the (encoded) `link`.
  void AppendResponse(const DavVisit& visit, const Resource& resource, std::string_view link,
                      std::string& xml) const;

 private:
  struct Name {
    std::string Namespace;
    std::string Local;
  };

  void AddNamed(const XmlElement& prop);
  void Add(const Property& property);
  void AppendFound(const DavVisit& visit, const Resource& resource, std::string& xml,
                   std::string& missing) const;

  std::vector<const Property*> known_;
  std::string unknown_;       ///< the others as empty elements
  bool isNamesOnly_ = false;  ///< values are not asked for
  bool isNamed_ = false;      ///< by the client, who hears of those that are missing
  bool needsText_ = false;
  std::optional<UtcPeriod> expansion_;
};

/// Appends a "response" element that says nothing but a status, such as "404 Not Found".
void AppendStatusResponse(std::string& xml, std::string_view link, std::string_view status);

}  // namespace orlune
