#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/ip_network.h"
#include "base/named_texts.h"
#include "http/open_file.h"

namespace orlune {

/// A request. Path and query are still encoded; the form is decoded, valid UTF-8 but for its files.
struct RequestMessage {
  std::string Method;
  std::string Path;
  std::string Query;
  NamedTexts Headers;  ///< those of `kReadHeaders` and `kForwardingHeaders`
  NamedTexts Form;
  std::string Body{};      ///< as it was sent, of a request for a branch of a page
  IpAddress Peer = {};     ///< the sender, or the last proxy before this server
  bool IsOverTls = false;  ///< on its way from the peer
};

/// The headers that the server reads.
inline constexpr const char* kReadHeaders[] = {
    "Host",
    "Origin",
    "Referer",
    "Sec-Fetch-Site",
    "Cookie",
    "User-Agent",
    "Content-Length",
    "Content-Type",
    "If-None-Match",
    "If-Modified-Since",
    "Accept-Encoding",
    "Accept-Language",
    "Authorization",
    "Depth",
    "If-Match",
    "If",
    "Content-Range",
    "Prefer",
    "Brief",
};

/// The headers in which proxies name the sender. Each is a list, which headers of the same name continue.
inline constexpr const char* kForwardingHeaders[] = {
    "Forwarded",
    "X-Forwarded-For",
    "X-Forwarded-Proto",
};

using Header = std::pair<std::string, std::string>;

/// A text that several replies send at once.
using SharedText = std::shared_ptr<const std::string>;

/// Makes a body while it is sent. Runs on the connection's thread, which serves others, too, so it waits for
/// nobody; what it holds is held for as long as the client takes to read.
struct BodySource {
  /// Appends what comes next; false when nothing does. When it throws, the connection ends, and the client
  /// knows the body to be incomplete.
  std::function<bool(std::string& piece)> AddPiece;
  std::size_t MemoryBytes = 0;  ///< that it holds
};

/// What is made of a `BodySource` at a time, about.
inline constexpr std::size_t kPieceBytes = std::size_t{32} << 10U;

/// A reply. The host adds the length of the body, if there is one before it is sent.
struct ReplyMessage {
  unsigned Status = 200;
  std::vector<Header> Headers;
  std::variant<std::string, SharedText, OpenFile, BodySource> Body;  ///< never a null text
  bool IsDocument = true;  ///< which a browser shows by itself, and so heeds every security header

  /// 0 for a `BodySource`.
  std::size_t BodySize() const;
  /// What the body takes of the memory, for this reply alone.
  std::size_t MemoryBytes() const;
};

/// A short page that says why a request is not answered.
ReplyMessage Refusal(unsigned status);
/// The same for somebody who asks too much at a time (429), or at a time when too much is asked (503).
ReplyMessage BusyRefusal(unsigned status);
ReplyMessage RedirectTo(std::string_view url);

}  // namespace orlune
