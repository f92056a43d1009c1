#include "http/mhd_response.h"

#include <cstdint>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace orlune {
namespace {

/// `owner` outlives the response, which sends `text`, a part of it.
template <class Owner>
ResponseHandle MakeResponse(std::unique_ptr<Owner> owner, const std::string& text) {
  // libmicrohttpd only reads it.
  ResponseHandle response(
      MHD_create_response_from_buffer_with_free_callback_cls(
          text.size(), const_cast<char*>(text.data()),
          [](void* owned) { std::unique_ptr<Owner>(static_cast<Owner*>(owned)); }, owner.get()),
      &MHD_destroy_response);
  if (response != nullptr) static_cast<void>(owner.release());
  return response;
}

ResponseHandle MakeResponse(std::string body) {
  auto owner = std::make_unique<std::string>(std::move(body));
  const std::string& text = *owner;
  return MakeResponse(std::move(owner), text);
}

ResponseHandle MakeResponse(SharedText body) {
  const std::string& text = *body;
  return MakeResponse(std::make_unique<SharedText>(std::move(body)), text);
}

ResponseHandle MakeResponse(OpenFile file) {
  const std::size_t size = file.State().Size;
  return {MHD_create_response_from_fd(size, file.Release()), &MHD_destroy_response};
}

class SourceReader {
 public:
  explicit SourceReader(BodySource source) : source_(std::move(source)) {}

  /// Copies up to `most` bytes to `to`; 0 at the end.
  std::size_t Read(char* to, std::size_t most) {
    if (copied_ == piece_.size()) MakePiece();
    const std::size_t size = piece_.copy(to, most, copied_);
    copied_ += size;
    return size;
  }

 private:
  void MakePiece() {
    piece_.clear();
    copied_ = 0;
    while (hasMore_ && piece_.size() < kPieceBytes) hasMore_ = source_.AddPiece(piece_);
  }

  BodySource source_;
  std::string piece_;
  std::size_t copied_ = 0;
  bool hasMore_ = true;
};

ssize_t ReadSource(void* reader, std::uint64_t /*position*/, char* to, std::size_t most) {
  try {
    const std::size_t size = static_cast<SourceReader*>(reader)->Read(to, most);
    return size == 0 ? MHD_CONTENT_READER_END_OF_STREAM : static_cast<ssize_t>(size);
  } catch (...) {
    return MHD_CONTENT_READER_END_WITH_ERROR;
  }
}

ResponseHandle MakeResponse(BodySource source) {
  auto owner = std::make_unique<SourceReader>(std::move(source));
  ResponseHandle response(
      MHD_create_response_from_callback(
          MHD_SIZE_UNKNOWN, kPieceBytes, &ReadSource, owner.get(),
          [](void* owned) { std::unique_ptr<SourceReader>(static_cast<SourceReader*>(owned)); }),
      &MHD_destroy_response);
  if (response != nullptr) static_cast<void>(owner.release());
  return response;
}

void AddHeader(const ResponseHandle& response, const char* name, const char* value) {
  if (MHD_add_response_header(response.get(), name, value) != MHD_YES)
    throw std::runtime_error(fmt::format("cannot add the header {} to a reply", name));
}

}  // namespace

ResponseHandle MakeResponse(ReplyMessage reply, std::span<const Header> commonHeaders, ResponseFrame frame) {
  const bool isStream = std::holds_alternative<BodySource>(reply.Body);
  ResponseHandle response = std::visit([](auto& body) { return MakeResponse(std::move(body)); }, reply.Body);
  if (response == nullptr) throw std::bad_alloc();
  for (const std::span<const Header> headers : {std::span<const Header>(reply.Headers), commonHeaders}) {
    for (const auto& [name, value] : headers) AddHeader(response, name.c_str(), value.c_str());
  }
  // libmicrohttpd would send the end of a chunked body.
  if (isStream && frame.IsForHead)
    MHD_set_response_options(response.get(), MHD_RF_HTTP_1_0_COMPATIBLE_STRICT, MHD_RO_END);
  if (frame.IsLast) AddHeader(response, "Connection", "close");
  return response;
}

std::string RawRefusal(ReplyMessage refusal, std::span<const Header> commonHeaders) {
  refusal.Headers.insert(refusal.Headers.end(), commonHeaders.begin(), commonHeaders.end());
  std::string text =
      fmt::format("HTTP/1.1 {} {}\r\n", refusal.Status, MHD_get_reason_phrase_for(refusal.Status));
  for (const auto& [name, value] : refusal.Headers)
    fmt::format_to(std::back_inserter(text), "{}: {}\r\n", name, value);
  return text + fmt::format("Content-Length: {}\r\nConnection: close\r\n\r\n{}", refusal.BodySize(),
                            std::get<std::string>(refusal.Body));
}

}  // namespace orlune
