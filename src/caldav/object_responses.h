#pragma once

#include <string>

#include "caldav/property_wish.h"

namespace orlune {

/// The multi-status of a report about the events of one calendar.
class ObjectResponses {
 public:
  /// The visit and the wish outlive it.
  ObjectResponses(const DavVisit& visit, const PropertyWish& wish);

  /// `text` is that of the object, or "" when the wish needs none.
  void Add(const SharedObject& object, std::string_view text);
  /// With the text as far as the wish needs it.
  void Add(const SharedObject& object);
  /// An event that is not there (404).
  void AddMissing(std::string_view name);
  void AddMissingLink(std::string_view link);
  /// After the responses, such as the token of a synchronisation.
  void AddText(std::string_view element, std::string_view text);

  ReplyMessage Reply();

 private:
  /// The encoded address of the object, valid until the next call.
  std::string_view LinkTo(std::string_view name);

  const DavVisit& visit_;
  const PropertyWish& wish_;
  std::string xml_;
  std::string link_;
  std::size_t calendarLength_;
};

}  // namespace orlune
