#pragma once

#include "base/named_texts.h"
#include "http/http_message.h"

namespace orlune {

/// Whether a request of a hosting page could change something: a posted one, or one that names an action or
/// logs out. `query` is the decoded query of `request`.
bool CouldChangeSomething(const RequestMessage& request, const NamedTexts& query);

/// Whether a request of a hosting page logs somebody in, which takes a processor for a while.
bool IsLogin(const RequestMessage& request);

/// Whether a page of another site made the browser send the request (cross-site request forgery), by its
/// headers; false when the browser sent none of them. Another port is another site, and so is the same host
/// without HTTPS when the request came over HTTPS.
bool ComesFromAnotherSite(const RequestMessage& request, bool isOverHttps);

}  // namespace orlune
