#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "http/file_forms.h"
#include "http/http_message.h"
#include "http/site_version.h"

namespace orlune {

/// Whether an If-None-Match header contains the entity tag `tag`, given with its quotes.
bool NamesTag(std::string_view ifNoneMatch, std::string_view tag);

/// The public files of a folder: none whose name, or a folder of whose path, begins with a dot, and none
/// outside that a symbolic link points to. Each has a second address below the folder's version, at which
/// browsers keep it for a year. May be used by several threads at once.
class StaticFiles {
 public:
  /// Throws ConfigurationError when `folder` is missing.
  explicit StaticFiles(const std::filesystem::path& folder, SiteOptions options = {});

  /// Reads the folder's version, and from then on knows what has changed since. Not while others use this.
  const std::string& ReadVersion();

  /// Answers GET and HEAD for a file, and 404 when `Find` finds none.
  ReplyMessage Answer(const RequestMessage& request) const;
  /// The file at an encoded absolute path of this site, or an empty path.
  std::filesystem::path Find(std::string_view urlPath) const;
  /// The file that `link` on the page at `pagePath` refers to, or an empty path.
  std::filesystem::path FindLinked(std::string_view pagePath, std::string_view link) const;

 private:
  /// Whether it is asked for with the version, and is as it was then.
  bool IsLasting(const RequestMessage& request, const std::filesystem::path& path,
                 const FileForms& forms) const;

  std::filesystem::path folder_;
  SiteOptions options_;
  std::unique_ptr<KeptForms> forms_;
  std::optional<SiteVersion> version_;
};

}  // namespace orlune
