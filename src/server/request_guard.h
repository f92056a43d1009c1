#pragma once

#include "server/http_message.h"
#include "server/named_texts.h"

namespace orlune {

/// Whether a request of a hosting page could change something: a posted one, or one that names an action or
/// logs out. `query` is the decoded query of `request`.
bool CouldChangeSomething(const RequestMessage& request, const NamedTexts& query);

/// Whether the browser says that a page of another site made it send the request. The same host without HTTPS
/// is another site when the request is known to come `isOverHttps`.
bool ComesFromAnotherSite(const RequestMessage& request, bool isOverHttps);

}  // namespace orlune
