#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/week.h"
#include "exchange/calendar_object.h"
#include "platform/secrets.h"

namespace orlune {

/// Everything of the rows that their text depends on, in one text of its own: two objects with equal texts of
/// their rows read the same to a client. `zone` is the name of the server's time zone.
std::string TextOfRows(std::span<const ObjectEvent> rows, const Week& week, std::string_view zone);

/// The ETag of an object that reads as the `text` that is kept of it; else of whatever its text depends on.
std::string ETagOfText(const Secrets& secrets, std::string_view text);

/// A name, title or comment of a row as people wrote it: with quotes in place of character references.
std::string PlainText(std::string_view stored);

/// The event as its row reads after it was stored: quotes as character references, times without seconds,
/// what is longer than its column cut.
OL_Event AsStored(OL_Event event);

}  // namespace orlune
