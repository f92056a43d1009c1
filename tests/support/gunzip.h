#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <libdeflate.h>

namespace orlune::testing {

/// What `compressed` becomes in a browser; "(broken)" when it is no gzip, or more than 64 kB.
inline std::string Gunzipped(std::string_view compressed) {
  const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> decompressor(
      libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
  std::string text(std::size_t{64} << 10U, '\0');
  std::size_t size = 0;
  if (libdeflate_gzip_decompress(decompressor.get(), compressed.data(), compressed.size(), text.data(),
                                 text.size(), &size) != LIBDEFLATE_SUCCESS)
    return "(broken)";
  text.resize(size);
  return text;
}

}  // namespace orlune::testing
