#pragma once

#include "http/gzip.h"
#include "http/http_message.h"

namespace orlune {

/// Compresses pages. May be used by several threads at once.
class PageCompression {
 public:
  /// Compresses the page in `reply` when the browser that sent `request` takes it. A page that another site
  /// has asked for is left as it is: that site could put guesses into the page, and whoever sees the length
  /// of the encrypted answer could tell the right ones.
  void Apply(const RequestMessage& request, bool isOverHttps, ReplyMessage& reply);

 private:
  Gzip gzip_{1, 8};
};

}  // namespace orlune
