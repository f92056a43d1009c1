#include "http/gzip.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <libdeflate.h>

#include "base/ascii.h"
#include "base/quality_values.h"

namespace orlune {

std::optional<std::string> Gzip(std::string_view text, GzipEffort effort) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
      libdeflate_alloc_compressor(static_cast<int>(effort)), &libdeflate_free_compressor);
  if (compressor == nullptr || text.empty()) return std::nullopt;
  std::string compressed(text.size() - 1, '\0');
  compressed.resize(libdeflate_gzip_compress(compressor.get(), text.data(), text.size(), compressed.data(),
                                             compressed.size()));
  if (compressed.empty()) return std::nullopt;
  compressed.shrink_to_fit();
  return compressed;
}

bool AcceptsGzip(std::string_view acceptEncoding) {
  const std::vector<WeightedItem> codings = ParseQualityValues(acceptEncoding);
  const auto weightOf = [&codings](std::string_view name) -> std::optional<int> {
    const auto found = std::ranges::find_if(
        codings, [name](const WeightedItem& coding) { return EqualsIgnoringAsciiCase(coding.Name, name); });
    return found == codings.end() ? std::nullopt : std::optional(found->Weight);
  };
  const int gzip = weightOf("gzip").value_or(weightOf("*").value_or(0));
  return gzip > 0 && gzip >= weightOf("identity").value_or(0);
}

}  // namespace orlune
