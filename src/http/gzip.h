#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct libdeflate_compressor;

namespace orlune {

/// Compresses texts for "Content-Encoding: gzip". May be used by several threads at once.
class Gzip {
 public:
  /// `level` is 1, the fastest, to 12. The memory of up to `mostKept` compressors is kept from text to text:
  /// without it, a page takes twice the time.
  Gzip(int level, std::size_t mostKept) : level_(level), mostKept_(mostKept) {}

  /// Nothing when that would not be smaller, or when there is no memory for it.
  std::optional<std::string> Compress(std::string_view text);

 private:
  using Compressor = std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)>;

  Compressor Take();
  void Keep(Compressor compressor);

  int level_;
  std::size_t mostKept_;
  std::mutex mutex_;
  std::vector<Compressor> kept_;
};

/// Whether a browser with this header Accept-Encoding reads gzip, and does not prefer the text as it is.
bool AcceptsGzip(std::string_view acceptEncoding);

}  // namespace orlune
