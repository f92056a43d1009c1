#include "http/file_forms.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "http/css_text.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostBytesOfFile = std::size_t{1} << 20U;
constexpr std::size_t kMostBytes = std::size_t{16} << 20U;

constexpr std::string_view kImportBegin = "@import url(\"";
constexpr std::string_view kImportEnd = "\");";

bool IsPlainName(std::string_view name) {
  return !name.empty() && name.front() != '.' && std::ranges::all_of(name, [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
  });
}

/// The file named by the first line of a style sheet, @import url("NAME"); and nothing else; "" for any
/// other.
std::string_view ImportedName(std::string_view text) {
  std::string_view line = text.substr(0, text.find('\n'));
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (!line.starts_with(kImportBegin) || !line.ends_with(kImportEnd)) return {};
  const std::string_view name = line.substr(
      kImportBegin.size(), line.size() - std::min(line.size(), kImportBegin.size() + kImportEnd.size()));
  return IsPlainName(name) && name.ends_with(".css") ? name : std::string_view();
}

std::optional<std::string> ReadUnlessLarge(const OpenFile& file) {
  return file.State().Size <= kMostBytesOfFile ? file.Read() : std::nullopt;
}

/// Fills in what `text`, a style sheet of `folder`, becomes with the one that it imports.
void Join(const fs::path& folder, std::string_view text, FileForms& forms) {
  const std::string_view name = ImportedName(text);
  if (name.empty()) return;
  forms.Import = folder / name;
  const std::optional<OpenFile> import = OpenFile::Open(forms.Import);
  if (!import) return;
  forms.ImportState = import->State();
  std::optional<std::string> joined = ReadUnlessLarge(*import);
  if (!joined) return;
  joined->append(text.substr(std::min(text.find('\n'), text.size())));
  forms.Text = std::make_shared<const std::string>(*std::move(joined));
}

std::optional<FileState> StateOf(const fs::path& path) {
  const std::optional<OpenFile> file = OpenFile::Open(path);
  return file ? std::optional(file->State()) : std::nullopt;
}

std::size_t BytesOf(const FileForms& forms) {
  return (forms.Text == nullptr ? 0 : forms.Text->size()) +
         (forms.Gzipped == nullptr ? 0 : forms.Gzipped->size());
}

}  // namespace

std::shared_ptr<const FileForms> KeptForms::Find(const fs::path& path, const OpenFile& file) {
  if (!options_.Compresses && !options_.JoinsStyleSheets)
    return std::make_shared<const FileForms>(FileForms{file.State()});
  std::shared_ptr<const FileForms> kept = FindKept(path);
  if (kept != nullptr && kept->State == file.State() &&
      (kept->Import.empty() || StateOf(kept->Import) == kept->ImportState))
    return kept;
  return Keep(path, Make(path, file));
}

std::shared_ptr<const FileForms> KeptForms::FindKept(const fs::path& path) {
  const std::lock_guard lock(mutex_);
  const auto found = kept_.find(path.native());
  return found == kept_.end() ? nullptr : found->second;
}

FileForms KeptForms::Make(const fs::path& path, const OpenFile& file) {
  FileForms forms{file.State()};
  std::optional<std::string> text = ReadUnlessLarge(file);
  if (!text) return forms;
  const bool isStyleSheet = path.extension() == ".css";
  if (isStyleSheet && options_.JoinsStyleSheets) Join(path.parent_path(), *text, forms);
  if (!options_.Compresses) return forms;
  if (forms.Text != nullptr) text = *forms.Text;
  if (isStyleSheet) text = ShortenCss(*text);
  if (auto gzipped = gzip_.Compress(*text))
    forms.Gzipped = std::make_shared<const std::string>(*std::move(gzipped));
  return forms;
}

std::shared_ptr<const FileForms> KeptForms::Keep(const fs::path& path, FileForms forms) {
  const std::lock_guard lock(mutex_);
  std::shared_ptr<const FileForms>& kept = kept_[path.native()];
  if (kept != nullptr) bytes_ -= BytesOf(*kept);
  if (bytes_ + BytesOf(forms) > kMostBytes) forms.Text = forms.Gzipped = nullptr;
  bytes_ += BytesOf(forms);
  kept = std::make_shared<const FileForms>(std::move(forms));
  return kept;
}

}  // namespace orlune
