#pragma once

#include "caldav/dav_visit.h"

namespace orlune {

/// The report that the body asks for. Throws DavError.
ReplyMessage AnswerReport(const DavVisit& visit);

// The reports of a calendar, whose elements are handed in.

/// calendar-query (RFC 4791, section 7.8).
ReplyMessage QueryCalendar(const DavVisit& visit, const XmlElement& report);
/// calendar-multiget (section 7.9): the events that it names.
ReplyMessage GetNamedEvents(const DavVisit& visit, const XmlElement& report);
/// sync-collection (RFC 6578): what has changed since a token.
ReplyMessage SynchroniseCalendar(const DavVisit& visit, const XmlElement& report);
/// free-busy-query (RFC 4791, section 7.10).
ReplyMessage TellFreeAndBusy(const DavVisit& visit, const XmlElement& report);

// The reports about users, who find nobody but themselves (RFC 3744, sections 9.4 and 9.5).

ReplyMessage SearchPrincipals(const DavVisit& visit, const XmlElement& report);
ReplyMessage SearchedProperties(const DavVisit& visit, const XmlElement& report);

}  // namespace orlune
