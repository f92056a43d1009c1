#pragma once

#include "base/named_texts.h"
#include "http/http_message.h"

namespace orlune {

/// Whether a request of a hosting page could change something: a posted one, or one that names an action or
/// logs out. `query` is the decoded query of `request`.
bool CouldChangeSomething(const RequestMessage& request, const NamedTexts& query);

/// Whether the browser says that a page of another site made it send the request. The same host without HTTPS
/// is another site when the request is known to come `isOverHttps`.
bool ComesFromAnotherSite(const RequestMessage& request, bool isOverHttps);

}  // namespace orlune
