#pragma once

#include <chrono>
#include <string_view>

#include "caldav/dav_address.h"
#include "caldav/xml_element.h"
#include "exchange/participant.h"
#include "exchange/shared_objects.h"
#include "http/http_message.h"
#include "platform/database.h"

namespace orlune {

/// One request of a client whose credentials were right. Owns nothing.
struct DavVisit {
  const RequestMessage& Message;
  Connection& Database;
  const ExchangeTools& Tools;
  const orlune::Participant& Participant;
  const DavLinks& Links;
  const DavAddress& Address;       ///< with user and calendar as they are stored
  const SharedCalendar* Calendar;  ///< at the address, or that of its object; else null
};

/// The request's body, whose root is this element of "DAV:", or any for "". Throws DavError.
XmlElement ReadBody(const DavVisit& visit, std::string_view root = {});

/// Whether the client does without what it can tell itself (RFC 8144, section 2; "Brief: t").
bool WantsMinimalReply(const DavVisit& visit);

/// The calendar at the address; throws DavError when there is another kind of thing.
const SharedCalendar& CalendarOf(const DavVisit& visit);

/// The object at the address. Throws DavError (404).
SharedObject LoadObject(const DavVisit& visit);

/// "20260314T093000Z" as a moment. Throws DavError (valid-filter).
std::chrono::sys_seconds ReadUtcTime(std::string_view text);
/// The attributes "start" and "end" of an element; one of them may be missing when `maybeOpen`. Throws
/// DavError (valid-filter).
UtcPeriod ReadPeriod(const XmlElement& element, bool maybeOpen);

}  // namespace orlune
