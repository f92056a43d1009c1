#pragma once

#include "http/http_message.h"

namespace orlune {

/// Compresses the page in `reply` when the browser that sent `request` takes it. A page that another site has
/// asked for is left as it is: that site could put guesses into the page, and whoever sees the length of the
/// encrypted answer could tell the right ones.
void CompressPage(const RequestMessage& request, bool isOverHttps, ReplyMessage& reply);

}  // namespace orlune
