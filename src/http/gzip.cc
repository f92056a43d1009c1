#include "http/gzip.h"

#include <algorithm>
#include <utility>

#include <libdeflate.h>

#include "base/ascii.h"
#include "base/quality_values.h"

namespace orlune {

std::optional<std::string> Gzip::Compress(std::string_view text) {
  Compressor compressor = Take();
  if (compressor == nullptr || text.empty()) return std::nullopt;
  std::string compressed(text.size() - 1, '\0');
  compressed.resize(libdeflate_gzip_compress(compressor.get(), text.data(), text.size(), compressed.data(),
                                             compressed.size()));
  Keep(std::move(compressor));
  if (compressed.empty()) return std::nullopt;
  compressed.shrink_to_fit();
  return compressed;
}

Gzip::Compressor Gzip::Take() {
  const std::lock_guard lock(mutex_);
  if (kept_.empty()) return {libdeflate_alloc_compressor(level_), &libdeflate_free_compressor};
  Compressor compressor = std::move(kept_.back());
  kept_.pop_back();
  return compressor;
}

void Gzip::Keep(Compressor compressor) {
  const std::lock_guard lock(mutex_);
  if (kept_.size() < mostKept_) kept_.push_back(std::move(compressor));
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
