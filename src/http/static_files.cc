#include "http/static_files.h"

#include <algorithm>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "base/ascii.h"
#include "base/configuration_error.h"
#include "base/url_encoding.h"
#include "http/gzip.h"
#include "http/http_date.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

struct FileType {
  std::string_view Extension;
  std::string_view ContentType;
  bool IsText;      ///< or the like: becomes smaller when it is compressed
  bool IsDocument;  ///< which may be shown by itself and then run scripts
};

constexpr FileType kFileTypes[] = {
    {".css", "text/css; charset=utf-8", true, false},
    {".gif", "image/gif", false, false},
    {".html", "text/html; charset=utf-8", true, true},
    {".ico", "image/x-icon", true, false},
    {".jpeg", "image/jpeg", false, false},
    {".jpg", "image/jpeg", false, false},
    {".js", "text/javascript", true, false},
    {".png", "image/png", false, false},
    {".svg", "image/svg+xml", true, true},
    {".txt", "text/plain; charset=utf-8", true, true},
    {".webp", "image/webp", false, false},
};

FileType TypeOf(const fs::path& file) {
  const std::string extension = file.extension().string();
  for (const FileType& type : kFileTypes) {
    if (EqualsIgnoringAsciiCase(extension, type.Extension)) return type;
  }
  return {"", "application/octet-stream", false, true};
}

std::vector<std::string_view> SplitPath(std::string_view path) {
  std::vector<std::string_view> names;
  while (true) {
    const std::size_t slash = path.find('/');
    names.push_back(path.substr(0, slash));
    if (slash == std::string_view::npos) return names;
    path.remove_prefix(slash + 1);
  }
}

bool IsServedName(std::string_view name) {
  return !name.empty() && name.front() != '.' && std::none_of(name.begin(), name.end(), [](char c) {
    return c == '\\' || (c >= 0 && c < ' ') || c == 0x7F;
  });
}

bool IsServedPath(std::string_view relativePath) {
  const std::vector<std::string_view> names = SplitPath(relativePath);
  return std::all_of(names.begin(), names.end(), IsServedName);
}

std::string StateText(const FileState& state) {
  return fmt::format("{:x}-{:x}", state.Size, state.ModifiedAt.time_since_epoch().count());
}

/// The entity tag of one of the forms of a file.
std::string EntityTag(const FileForms& forms, bool isGzipped) {
  return fmt::format("\"{}{}{}{}\"", StateText(forms.State), forms.ImportState ? "-" : "",
                     forms.ImportState ? StateText(*forms.ImportState) : "", isGzipped ? "-gzip" : "");
}

std::string LastModified(const FileForms& forms) {
  auto last = forms.State.ModifiedAt;
  if (forms.ImportState) last = std::max(last, forms.ImportState->ModifiedAt);
  return FormatHttpDate(std::chrono::floor<std::chrono::seconds>(last));
}

/// The tag of the form that the browser has, `tag` when it tells only a date; nothing when it has none.
std::optional<std::string> KnownTag(const RequestMessage& request, const FileForms& forms,
                                    const std::string& tag, std::string_view modifiedAt) {
  const std::string_view known = request.Headers.Find("If-None-Match");
  if (known.empty() && request.Headers.Find("If-Modified-Since") == modifiedAt) return tag;
  for (const std::string& formTag : {tag, EntityTag(forms, false), EntityTag(forms, true)}) {
    if (NamesTag(known, formTag)) return formTag;
  }
  return std::nullopt;
}

decltype(ReplyMessage::Body) BodyOf(const FileForms& forms, bool isGzipped, OpenFile file) {
  if (isGzipped) return forms.Gzipped;
  if (forms.Text != nullptr) return forms.Text;
  return file;
}

// Resolves "." and ".." of an absolute path as a browser does.
std::string ResolveDots(std::string_view path) {
  std::vector<std::string_view> kept;
  for (const std::string_view name : SplitPath(path)) {
    if (name == "..") {
      if (kept.size() > 1) kept.pop_back();
    } else if (name != ".") {
      kept.push_back(name);
    }
  }
  std::string resolved;
  for (std::size_t i = 1; i < kept.size(); ++i) resolved.append(1, '/').append(kept[i]);
  return resolved;
}

}  // namespace

bool NamesTag(std::string_view ifNoneMatch, std::string_view tag) {
  while (!ifNoneMatch.empty()) {
    if (ifNoneMatch.front() == '*') return true;
    if (ifNoneMatch.front() != '"') {
      ifNoneMatch.remove_prefix(1);
      continue;
    }
    const std::size_t closing = ifNoneMatch.find('"', 1);
    if (closing == std::string_view::npos) return false;
    if (ifNoneMatch.substr(0, closing + 1) == tag) return true;
    ifNoneMatch.remove_prefix(closing + 1);
  }
  return false;
}

StaticFiles::StaticFiles(const fs::path& folder, SiteOptions options)
    : options_(options), forms_(std::make_unique<KeptForms>(options)) {
  std::error_code error;
  folder_ = fs::canonical(folder, error);
  if (error || !fs::is_directory(folder_, error))
    throw ConfigurationError(fmt::format("site folder {} is missing", folder.string()));
}

const std::string& StaticFiles::ReadVersion() {
  return version_.emplace(folder_).Name();
}

ReplyMessage StaticFiles::Answer(const RequestMessage& request) const {
  const fs::path path = Find(request.Path);
  std::optional<OpenFile> file = path.empty() ? std::nullopt : OpenFile::Open(path);
  if (!file) return Refusal(404);
  const FileType type = TypeOf(path);
  const std::shared_ptr<const FileForms> forms =
      type.IsText ? forms_->Find(path, *file) : std::make_shared<const FileForms>(FileForms{file->State()});
  const bool isGzipped = forms->Gzipped != nullptr && AcceptsGzip(request.Headers.Find("Accept-Encoding"));
  const std::string tag = EntityTag(*forms, isGzipped);
  const std::string modifiedAt = LastModified(*forms);
  const std::optional<std::string> knownTag = KnownTag(request, *forms, tag, modifiedAt);
  std::vector<Header> headers{{"ETag", knownTag.value_or(tag)}};
  if (IsLasting(request, path, *forms)) {
    headers.emplace_back("Cache-Control", "public, max-age=31536000, immutable");
  } else {
    headers.emplace_back("Last-Modified", modifiedAt);
    headers.emplace_back("Cache-Control", "max-age=300");
  }
  if (type.IsText && options_.Compresses) headers.emplace_back("Vary", "Accept-Encoding");
  const bool isDocument = type.IsDocument || !options_.Compresses;
  if (knownTag) return {304, std::move(headers), std::string(), isDocument};
  headers.emplace_back("Content-Type", type.ContentType);
  if (isGzipped) headers.emplace_back("Content-Encoding", "gzip");
  return {200, std::move(headers), BodyOf(*forms, isGzipped, *std::move(file)), isDocument};
}

bool StaticFiles::IsLasting(const RequestMessage& request, const fs::path& path,
                            const FileForms& forms) const {
  return version_ && SplitVersion(request.Path).Version == version_->Name() &&
         version_->Holds(path, forms.State) &&
         (!forms.ImportState || version_->Holds(forms.Import, *forms.ImportState));
}

fs::path StaticFiles::Find(std::string_view urlPath) const {
  const std::optional<std::string> decoded = DecodePath(SplitVersion(urlPath).Path);
  if (!decoded || !decoded->starts_with('/') || !IsServedPath(decoded->substr(1))) return {};
  std::error_code error;
  fs::path file = fs::canonical(folder_ / decoded->substr(1), error);
  if (error || !fs::is_regular_file(file, error)) return {};
  const fs::path relative = file.lexically_relative(folder_);
  return IsServedPath(relative.native()) ? file : fs::path();
}

fs::path StaticFiles::FindLinked(std::string_view pagePath, std::string_view link) const {
  link = link.substr(0, link.find_first_of("?#"));
  if (link.starts_with('/')) return Find(ResolveDots(link));
  std::string absolute(pagePath.substr(0, pagePath.rfind('/') + 1));
  return Find(ResolveDots(absolute.append(link)));
}

}  // namespace orlune
