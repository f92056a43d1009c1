#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlune {

/// How much time compressing takes.
enum class GzipEffort : int {
  kOnce = 9,  ///< for what is kept: about 20 us for each kilobyte
  kPage = 1,  ///< for what is made for one request: about 1.3 us for each kilobyte
};

/// `text` in the format gzip; nothing when that would not be smaller, or when there is no memory for it.
std::optional<std::string> Gzip(std::string_view text, GzipEffort effort);

/// Whether a browser with this header Accept-Encoding reads gzip, and does not prefer the text as it is.
bool AcceptsGzip(std::string_view acceptEncoding);

}  // namespace orlune
