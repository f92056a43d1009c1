#pragma once

#include "caldav/dav_visit.h"

namespace orlune {

// What is done with one event. All throw DavError.

/// The event's text; of a collection, a sentence for people.
ReplyMessage AnswerGet(const DavVisit& visit);
/// Stores an event of a client, new or changed.
ReplyMessage AnswerPut(const DavVisit& visit);
ReplyMessage AnswerDelete(const DavVisit& visit);

}  // namespace orlune
