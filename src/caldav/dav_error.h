#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "http/http_message.h"

namespace orlune {

/// Why a request is not carried out; `what()` is a sentence for the person at the other end.
class DavError : public std::runtime_error {
 public:
  /// `condition` is the element of the precondition that does not hold, such as "<D:valid-sync-token/>".
  DavError(unsigned status, const std::string& sentence, std::string condition = {})
      : std::runtime_error(sentence), Status(status), Condition(std::move(condition)) {}

  unsigned Status;
  std::string Condition;
  std::vector<Header> Headers{};  ///< further ones of the reply
};

/// A body of `type` that no cache keeps without asking again.
ReplyMessage DavReply(unsigned status, std::string_view type, std::string body);
/// A document that was begun by `XmlDocumentBegin`.
ReplyMessage XmlReply(unsigned status, std::string xml);
/// The reply with the sentence and its precondition (RFC 4918, section 16).
ReplyMessage ErrorReply(const DavError& error);

}  // namespace orlune
