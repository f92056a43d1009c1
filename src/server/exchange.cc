#include "server/exchange.h"

#include <charconv>

#include "server/utf8.h"

namespace orlune {
namespace {

constexpr std::size_t kFormReaderBuffer = 4096;
constexpr std::size_t kPatience = 8;  // how many times the largest body is heard out

// A browser that takes this server for a proxy sends the whole address.
std::string_view WithoutSite(std::string_view target) {
  constexpr std::string_view kScheme = "http://";
  if (!target.starts_with(kScheme)) return target;
  const std::size_t path = target.find('/', kScheme.size());
  return path == std::string_view::npos ? "/" : target.substr(path);
}

std::size_t AnnouncedLength(const NamedTexts& headers) {
  const std::string_view text = headers.Find("Content-Length");
  std::size_t length = 0;
  std::from_chars(text.data(), text.data() + text.size(), length);
  return length;
}

}  // namespace

Exchange::Exchange(std::string_view target, std::size_t largestBody)
    : formReader_(nullptr, &MHD_destroy_post_processor), largestBody_(largestBody) {
  target = WithoutSite(target);
  const std::size_t question = target.find('?');
  message_.Path = target.substr(0, question);
  if (question != std::string_view::npos) message_.Query = target.substr(question + 1);
}

void Exchange::Begin(MHD_Connection* connection, std::string_view method) {
  hasBegun_ = true;
  message_.Method = method;
  for (const char* name : kReadHeaders) {
    const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    if (value != nullptr) message_.Headers.Set(name, value);
  }
  const std::size_t announced = AnnouncedLength(message_.Headers);
  if (announced > largestBody_) refusal_ = MHD_HTTP_CONTENT_TOO_LARGE;
  isHopeless_ = announced > kPatience * largestBody_;
  if (method == "POST" && refusal_ == 0)
    formReader_.reset(MHD_create_post_processor(connection, kFormReaderBuffer, &TakeFieldPiece, this));
}

bool Exchange::TakeBody(std::string_view piece) {
  bodyBytes_ += piece.size();
  if (bodyBytes_ > largestBody_) {
    refusal_ = MHD_HTTP_CONTENT_TOO_LARGE;
    return bodyBytes_ <= kPatience * largestBody_;
  }
  if (formReader_ != nullptr && refusal_ == 0 &&
      MHD_post_process(formReader_.get(), piece.data(), piece.size()) != MHD_YES)
    refusal_ = MHD_HTTP_BAD_REQUEST;
  return true;
}

void Exchange::End() {
  if (formReader_ == nullptr) return;
  if (MHD_destroy_post_processor(formReader_.release()) != MHD_YES && refusal_ == 0)
    refusal_ = MHD_HTTP_BAD_REQUEST;
  CommitField();
}

void Exchange::CommitField() {
  if (!hasField_) return;
  message_.Form.Add(RepairUtf8(std::move(fieldName_)), RepairUtf8(std::move(fieldValue_)));
  hasField_ = false;
}

MHD_Result Exchange::TakeFieldPiece(void* self, MHD_ValueKind /*kind*/, const char* name,
                                    const char* fileName, const char* /*contentType*/,
                                    const char* /*encoding*/, const char* piece, std::uint64_t offset,
                                    std::size_t size) {
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
