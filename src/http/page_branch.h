#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "http/http_message.h"
#include "http/trusted_proxies.h"

namespace orlune {

/// The branch that `/.well-known/caldav` leads to.
inline constexpr std::string_view kCalDavPrefix = "/dav/";

/// A request for an address below a hosting page's own that is answered without its session.
struct BranchRequest {
  const RequestMessage& Message;
  const orlune::Sender& Sender;
  std::string_view PagePath;
  std::string_view Rest;  ///< what follows the prefix, still encoded
};

/// Addresses below a hosting page's own that have nothing to do with its pages and their session: those of
/// programs, such as CalDAV clients. Every method reaches them.
struct PageBranch {
  std::string Prefix;  ///< begins and ends with "/", such as "/dav/"
  std::function<ReplyMessage(const BranchRequest&)> Writing;
  /// Throws WriteRefused when the database would have to be written to, or somebody waited for.
  std::function<ReplyMessage(const BranchRequest&)> Reading;
  std::size_t BodyBytes = 0;  ///< the largest body, which `RequestMessage::Body` has as it was sent
  bool IsSecret = false;      ///< what follows the prefix is a secret, and kept out of the log
};

}  // namespace orlune
