#include "http/body_length.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "base/ascii.h"

namespace orlune {
namespace {

class LengthHeaders {
 public:
  void Add(std::string_view name, std::string_view value) {
    if (name.find_first_of(" \t") != std::string_view::npos) isAmbiguous_ = true;
    if (EqualsIgnoringAsciiCase(name, "Content-Length")) AddLength(value);
    if (EqualsIgnoringAsciiCase(name, "Transfer-Encoding")) AddEncoding(value);
  }
  bool AreUnambiguous() const { return !isAmbiguous_ && !(length_ && isChunked_); }

 private:
  void AddLength(std::string_view value) {
    if (length_ && *length_ != value) isAmbiguous_ = true;
    length_ = value;
  }
  void AddEncoding(std::string_view value) {
    if (isChunked_ || !EqualsIgnoringAsciiCase(value, "chunked")) isAmbiguous_ = true;
    isChunked_ = true;
  }

  bool isAmbiguous_ = false;
  bool isChunked_ = false;
  std::optional<std::string_view> length_;
};

MHD_Result AddHeader(void* headers, MHD_ValueKind /*kind*/, const char* name, const char* value) {
  static_cast<LengthHeaders*>(headers)->Add(name, value == nullptr ? "" : value);
  return MHD_YES;
}

}  // namespace

bool HasUnambiguousLength(MHD_Connection* connection) {
  LengthHeaders headers;
  MHD_get_connection_values(connection, MHD_HEADER_KIND, &AddHeader, &headers);
  return headers.AreUnambiguous();
}

}  // namespace orlune
