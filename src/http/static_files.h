#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "http/http_message.h"

namespace orlune {

/// Whether an If-None-Match header names the entity tag `tag`, which stands in its quotes.
bool NamesTag(std::string_view ifNoneMatch, std::string_view tag);

/// The files below one folder, as far as they are for everybody: no file or folder whose name begins with a
/// dot, no folder itself, nothing that links lead out to. May be used by several threads at once.
class StaticFiles {
 public:
  /// Throws ConfigurationError when `folder` is no folder.
  explicit StaticFiles(const std::filesystem::path& folder);

  /// Answers GET and HEAD for a file, and 404 when `Find` finds none.
  ReplyMessage Answer(const RequestMessage& request) const;
  /// The file at an encoded absolute path of this site, or an empty path.
  std::filesystem::path Find(std::string_view urlPath) const;
  /// The file that `link`, standing on the page at `pagePath`, leads to, or an empty path.
  std::filesystem::path FindLinked(std::string_view pagePath, std::string_view link) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace orlune
