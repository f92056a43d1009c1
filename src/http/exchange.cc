#include "http/exchange.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>

#include "base/ascii.h"
#include "base/url_encoding.h"
#include "base/utf8.h"
#include "http/body_length.h"

namespace orlune {
namespace {

constexpr std::size_t kPartsBuffer = 4096;
// The library keeps what it parses in a fixed space, `HostLimits::HeaderBytes`, and is lost where an
// address overflows it.
constexpr std::size_t kLongestTarget = 8192;
constexpr std::ptrdiff_t kMostParameters = 250;
constexpr std::size_t kPatience = 8;  // how many times the largest body is heard out

// A browser that takes this server for a proxy sends the whole address.
std::string_view WithoutSite(std::string_view target) {
  constexpr std::string_view kScheme = "http://";
  if (!target.starts_with(kScheme)) return target;
  const std::size_t path = target.find('/', kScheme.size());
  return path == std::string_view::npos ? "/" : target.substr(path);
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

bool IsTooLong(std::string_view target) {
  return target.size() > kLongestTarget || std::count(target.begin(), target.end(), '&') >= kMostParameters;
}

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

// Adds a header to the texts when it is one that proxies tell the sender by.
MHD_Result AddForwarding(void* texts, MHD_ValueKind /*kind*/, const char* name, const char* value) {
  for (const char* known : kForwardingHeaders) {
    if (EqualsIgnoringAsciiCase(name, known))
      static_cast<NamedTexts*>(texts)->Add(known, value == nullptr ? "" : value);
  }
  return MHD_YES;
}

IpAddress PeerOf(MHD_Connection* connection) {
  const auto* peer = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
  return peer != nullptr && peer->client_addr != nullptr ? IpAddress(*peer->client_addr) : IpAddress();
}

std::size_t AnnouncedLength(const NamedTexts& headers) {
  const std::string_view text = headers.Find("Content-Length");
  std::size_t length = 0;
  std::from_chars(text.data(), text.data() + text.size(), length);
  return length;
}

}  // namespace

Exchange::Exchange(const char* target, std::size_t largestBody)
    : targetEnd_(target + std::strlen(target)),
      partsReader_(nullptr, &MHD_destroy_post_processor),
      largestBody_(largestBody) {
  const std::string_view sent(target, targetEnd_);
  if (IsTooLong(sent)) RefuseHopeless(MHD_HTTP_URI_TOO_LONG);
  if (std::any_of(sent.begin(), sent.end(), IsControl)) Refuse(MHD_HTTP_BAD_REQUEST);
  const std::string_view local = WithoutSite(sent);
  const std::size_t question = local.find('?');
  message_.Path = local.substr(0, question);
  if (question != std::string_view::npos) message_.Query = local.substr(question + 1);
}

void Exchange::Begin(MHD_Connection* connection, std::string_view method, const char* version) {
  hasBegun_ = true;
  message_.Method = method;
  const bool hasNul = version != targetEnd_ + 1;
  if (hasNul) Refuse(MHD_HTTP_BAD_REQUEST);
  if (!HasClearLength(connection)) RefuseHopeless(MHD_HTTP_BAD_REQUEST);
  for (const char* name : kReadHeaders) {
    const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    if (value != nullptr) message_.Headers.Set(name, value);
  }
  MHD_get_connection_values(connection, MHD_HEADER_KIND, &AddForwarding, &message_.Headers);
  message_.Peer = PeerOf(connection);
  const std::size_t announced = AnnouncedLength(message_.Headers);
  if (announced > largestBody_) Refuse(MHD_HTTP_CONTENT_TOO_LARGE);
  if (announced > kPatience * largestBody_) RefuseHopeless(MHD_HTTP_CONTENT_TOO_LARGE);
  if (method == "POST" && refusal_ == 0) ExpectForm(connection);
}

bool Exchange::TakeBody(std::string_view piece) {
  bodyBytes_ += piece.size();
  if (bodyBytes_ > largestBody_) {
    refusal_ = MHD_HTTP_CONTENT_TOO_LARGE;
    return bodyBytes_ <= kPatience * largestBody_;
  }
  if (isQueryForm_) queryForm_ += piece;
  if (partsReader_ != nullptr && MHD_post_process(partsReader_.get(), piece.data(), piece.size()) != MHD_YES)
    refusal_ = MHD_HTTP_BAD_REQUEST;
  return true;
}

void Exchange::End() {
  if (refusal_ != 0) return;
  if (isQueryForm_) message_.Form = DecodeQuery(queryForm_);
  if (partsReader_ == nullptr) return;
  if (MHD_destroy_post_processor(partsReader_.release()) != MHD_YES) refusal_ = MHD_HTTP_BAD_REQUEST;
  CommitField();
}

void Exchange::RefuseHopeless(unsigned status) {
  Refuse(status);
  isHopeless_ = true;
}

void Exchange::ExpectForm(MHD_Connection* connection) {
  const std::string type = LowerCase(message_.Headers.Find("Content-Type"));
  isQueryForm_ = type.starts_with("application/x-www-form-urlencoded");
  if (!type.starts_with("multipart/form-data")) return;
  partsReader_.reset(MHD_create_post_processor(connection, kPartsBuffer, &TakePart, this));
  if (partsReader_ == nullptr) refusal_ = MHD_HTTP_BAD_REQUEST;
}

void Exchange::CommitField() {
  if (!hasField_) return;
  message_.Form.Add(RepairUtf8(std::move(fieldName_)), RepairUtf8(std::move(fieldValue_)));
  hasField_ = false;
}

MHD_Result Exchange::TakePart(void* self, MHD_ValueKind /*kind*/, const char* name, const char* fileName,
                              const char* /*contentType*/, const char* /*encoding*/, const char* piece,
                              std::uint64_t offset, std::size_t size) {
  Exchange& exchange = *static_cast<Exchange*>(self);
  if (name == nullptr || fileName != nullptr) return MHD_YES;
  if (offset == 0) {
    exchange.CommitField();
    exchange.fieldName_ = name;
    exchange.fieldValue_.clear();
    exchange.hasField_ = true;
  }
  exchange.fieldValue_.append(piece, size);
  return MHD_YES;
}

}  // namespace orlune
