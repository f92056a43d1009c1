#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/named_texts.h"
#include "http/ip_network.h"
#include "http/open_file.h"

namespace orlune {

/// A request as it came off the wire. Path and query are still encoded; the form is decoded, valid UTF-8.
struct RequestMessage {
  std::string Method;
  std::string Path;
  std::string Query;
  NamedTexts Headers;  ///< those of `kReadHeaders` and `kForwardingHeaders`
  NamedTexts Form;
  IpAddress Peer = {};  ///< who is connected: the sender, or the last proxy on the way
};

/// The headers that the server looks at.
inline constexpr const char* kReadHeaders[] = {
    "Host",         "Origin",        "Sec-Fetch-Site",    "Cookie", "User-Agent", "Content-Length",
    "Content-Type", "If-None-Match", "If-Modified-Since",
};

/// The headers that proxies tell the sender by. Each is a list, which may go on in headers of the same name.
inline constexpr const char* kForwardingHeaders[] = {
    "Forwarded",
    "X-Forwarded-For",
    "X-Forwarded-Proto",
};

using Header = std::pair<std::string, std::string>;

/// What is sent back. The length of the body is told by the host.
struct ReplyMessage {
  unsigned Status = 200;
  std::vector<Header> Headers;
  std::variant<std::string, OpenFile> Body;

  std::size_t BodySize() const;
};

/// A short page that says why a request is not answered.
ReplyMessage Refusal(unsigned status);
/// Leads the browser to another address.
ReplyMessage RedirectTo(std::string_view url);

}  // namespace orlune
