#pragma once

#include "caldav/dav_visit.h"

namespace orlune {

/// What is at the address and, with "Depth: 1", in it. Throws DavError.
ReplyMessage AnswerPropfind(const DavVisit& visit);

/// Stores the colour and the place of a calendar in the lists of devices; all else is protected, and nothing
/// is stored when the request asks for any of it. Throws DavError.
ReplyMessage AnswerProppatch(const DavVisit& visit);

}  // namespace orlune
