#include "http/request_reader.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text.h"
#include "base/url_encoding.h"
#include "base/utf8.h"
#include "http/body_length.h"
#include "http/mhd_connection.h"

namespace orlune {
namespace {

constexpr std::size_t kPartsBufferSize = 4096;
// libmicrohttpd parses within `HostLimits::HeaderBytes`, and cannot even refuse an address that overflows it.
constexpr std::size_t kMaxTargetSize = 8192;
constexpr std::size_t kMaxHeadersSize = std::size_t{16} << 10U;
constexpr std::ptrdiff_t kMaxParameters = 250;
constexpr std::size_t kMaxDrainFactor = 8;  // how many times the largest body is read before hanging up

// A client that takes this server for a proxy sends a whole URL.
std::string_view WithoutSite(std::string_view target) {
  constexpr std::string_view kScheme = "http://";
  if (!target.starts_with(kScheme)) return target;
  const std::size_t path = target.find('/', kScheme.size());
  return path == std::string_view::npos ? "/" : target.substr(path);
}

bool IsContentType(std::string_view header, std::string_view type) {
  return EqualsIgnoringAsciiCase(header.substr(0, type.size()), type);
}

bool IsTooLong(std::string_view target) {
  return target.size() > kMaxTargetSize || std::count(target.begin(), target.end(), '&') >= kMaxParameters;
}

bool IsBlankOrControl(char c) {
  return static_cast<unsigned char>(c) <= ' ' || c == '\x7F';
}

/// Takes up what libmicrohttpd has no single value of.
struct HeaderReader {
  NamedTexts& Forwarding;
  std::size_t Hosts = 0;
  std::size_t Size = 0;  ///< of all headers as they were sent, in bytes

  static MHD_Result Add(void* self, MHD_ValueKind /*kind*/, const char* name, const char* value) {
    HeaderReader& reader = *static_cast<HeaderReader*>(self);
    const std::string_view text = value == nullptr ? "" : value;
    reader.Size += std::string_view(name).size() + text.size() + std::string_view(": \r\n").size();
    if (EqualsIgnoringAsciiCase(name, "Host")) ++reader.Hosts;
    for (const char* known : kForwardingHeaders) {
      if (EqualsIgnoringAsciiCase(name, known)) reader.Forwarding.Add(known, text);
    }
    return MHD_YES;
  }
};

IpAddress PeerOf(MHD_Connection* connection) {
  const auto* peer = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
  return peer != nullptr && peer->client_addr != nullptr ? IpAddress(*peer->client_addr) : IpAddress();
}

std::size_t AnnouncedLength(const NamedTexts& headers) {
  return WholeNumber<std::size_t>(headers.Find("Content-Length")).value_or(0);
}

}  // namespace

RequestReader::RequestReader(std::string_view target, std::size_t maxForm, const BodyRulesAt& rulesAt)
    : targetEnd_(target.data() + target.size()),
      partsReader_(nullptr, &MHD_destroy_post_processor),
      maxBody_(maxForm) {
  if (IsTooLong(target)) RefuseAndClose(MHD_HTTP_URI_TOO_LONG);
  if (std::any_of(target.begin(), target.end(), IsBlankOrControl)) Refuse(MHD_HTTP_BAD_REQUEST);
  const std::string_view local = WithoutSite(target);
  const std::size_t question = local.find('?');
  message_.Path = local.substr(0, question);
  if (question != std::string_view::npos) message_.Query = local.substr(question + 1);
  if (rulesAt) rules_ = rulesAt(message_.Path);
  maxBody_ = rules_.MostRawBytes > 0 ? rules_.MostRawBytes : maxForm + rules_.MostFileBytes;
}

void RequestReader::ReadHeaders(MHD_Connection* connection, std::string_view method, const char* version) {
  hasHeaders_ = true;
  message_.Method = method;
  const bool hasNul = version != targetEnd_ + 1;
  if (hasNul) Refuse(MHD_HTTP_BAD_REQUEST);
  if (!HasUnambiguousLength(connection)) RefuseAndClose(MHD_HTTP_BAD_REQUEST);
  for (const char* name : kReadHeaders) {
    const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    if (value != nullptr) message_.Headers.Set(name, value);
  }
  ReadAllHeaders(connection, version);
  message_.Peer = PeerOf(connection);
  message_.IsOverTls = TlsSessionOf(connection) != nullptr;
  const std::size_t announced = AnnouncedLength(message_.Headers);
  if (announced > maxBody_) Refuse(MHD_HTTP_CONTENT_TOO_LARGE);
  if (announced > kMaxDrainFactor * maxBody_) RefuseAndClose(MHD_HTTP_CONTENT_TOO_LARGE);
  if (method == "POST" && refusal_ == 0 && rules_.MostRawBytes == 0) ExpectForm(connection);
}

bool RequestReader::ReadBody(std::string_view piece) {
  bodyBytes_ += piece.size();
  if (bodyBytes_ > maxBody_) RefuseBody(MHD_HTTP_CONTENT_TOO_LARGE);
  if (refusal_ != 0) return bodyBytes_ <= kMaxDrainFactor * maxBody_;
  if (rules_.MostRawBytes > 0) message_.Body += piece;
  if (isQueryForm_) queryForm_ += piece;
  if (partsReader_ != nullptr && MHD_post_process(partsReader_.get(), piece.data(), piece.size()) != MHD_YES)
    refusal_ = MHD_HTTP_BAD_REQUEST;
  return true;
}

void RequestReader::RefuseBody(unsigned status) {
  Refuse(status);
  message_.Form = {};
  for (std::string* text : {&message_.Body, &queryForm_, &fieldName_, &fieldValue_})
    std::string().swap(*text);
}

void RequestReader::End() {
  if (refusal_ != 0) return;
  if (isQueryForm_) message_.Form = DecodeQuery(queryForm_);
  if (partsReader_ == nullptr) return;
  if (MHD_destroy_post_processor(partsReader_.release()) != MHD_YES) refusal_ = MHD_HTTP_BAD_REQUEST;
  CommitField();
}

void RequestReader::RefuseAndClose(unsigned status) {
  Refuse(status);
  mustClose_ = true;
}

void RequestReader::ReadAllHeaders(MHD_Connection* connection, std::string_view version) {
  HeaderReader reader{message_.Headers};
  MHD_get_connection_values(connection, MHD_HEADER_KIND, &HeaderReader::Add, &reader);
  if (reader.Hosts > 1 || (reader.Hosts == 0 && version != "HTTP/1.0")) Refuse(MHD_HTTP_BAD_REQUEST);
  if (reader.Size > kMaxHeadersSize) Refuse(MHD_HTTP_REQUEST_HEADER_FIELDS_TOO_LARGE);
}

void RequestReader::ExpectForm(MHD_Connection* connection) {
  const std::string_view type = message_.Headers.Find("Content-Type");
  isQueryForm_ = IsContentType(type, "application/x-www-form-urlencoded");
  if (!IsContentType(type, "multipart/form-data")) return;
  partsReader_.reset(MHD_create_post_processor(connection, kPartsBufferSize, &ReadPart, this));
  if (partsReader_ == nullptr) refusal_ = MHD_HTTP_BAD_REQUEST;
}

void RequestReader::CommitField() {
  if (!hasField_) return;
  if (!isFile_) fieldValue_ = RepairUtf8(std::move(fieldValue_));
  message_.Form.Add(RepairUtf8(std::move(fieldName_)), fieldValue_);
  hasField_ = false;
}

MHD_Result RequestReader::ReadPart(void* self, MHD_ValueKind /*kind*/, const char* name, const char* fileName,
                                   const char* /*contentType*/, const char* /*encoding*/, const char* piece,
                                   std::uint64_t offset, std::size_t size) {
  RequestReader& reader = *static_cast<RequestReader*>(self);
  const bool isFile = fileName != nullptr;
  if (name == nullptr || reader.refusal_ != 0) return MHD_YES;
  if (isFile && reader.rules_.MostFileBytes == 0) return MHD_YES;
  if (offset == 0) {
    reader.CommitField();
    reader.fieldName_ = name;
    reader.fieldValue_.clear();
    reader.hasField_ = true;
    reader.isFile_ = isFile;
  }
  if (isFile && reader.fieldValue_.size() + size > reader.rules_.MostFileBytes) {
    reader.RefuseBody(MHD_HTTP_CONTENT_TOO_LARGE);
    return MHD_YES;
  }
  reader.fieldValue_.append(piece, size);
  return MHD_YES;
}

}  // namespace orlune
