#include "http/body_length.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include <strings.h>

namespace orlune {
namespace {

class LengthHeaders {
 public:
  void Take(std::string_view name, const char* value) {
    if (name.find_first_of(" \t") != std::string_view::npos) isClear_ = false;
    if (strcasecmp(name.data(), "Content-Length") == 0) TakeLength(value);
    if (strcasecmp(name.data(), "Transfer-Encoding") == 0) TakeEncoding(value);
  }
  bool AreClear() const { return isClear_ && !(length_ && isChunked_); }

 private:
  void TakeLength(std::string_view value) {
    if (length_ && *length_ != value) isClear_ = false;
    length_ = value;
  }
  void TakeEncoding(const char* value) {
    if (isChunked_ || strcasecmp(value, "chunked") != 0) isClear_ = false;
    isChunked_ = true;
  }

  bool isClear_ = true;
  bool isChunked_ = false;
  std::optional<std::string_view> length_;
};

MHD_Result TakeHeader(void* headers, MHD_ValueKind /*kind*/, const char* name, const char* value) {
  static_cast<LengthHeaders*>(headers)->Take(name, value == nullptr ? "" : value);
  return MHD_YES;
}

}  // namespace

bool HasClearLength(MHD_Connection* connection) {
  LengthHeaders headers;
  MHD_get_connection_values(connection, MHD_HEADER_KIND, &TakeHeader, &headers);
  return headers.AreClear();
}

}  // namespace orlune
