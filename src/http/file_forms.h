#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

#include "http/gzip.h"
#include "http/http_message.h"
#include "http/open_file.h"

namespace orlune {

/// What is done to the files of the site before they are sent.
struct SiteOptions {
  bool Compresses = false;        ///< texts, for browsers that take it
  bool JoinsStyleSheets = false;  ///< puts the text of an imported style sheet in place of the import
};

/// The forms in which a text file is sent. An import that cannot be replaced is left as it is.
struct FileForms {
  FileState State;                            ///< of the file that they were made from
  std::filesystem::path Import = {};          ///< the style sheet beside it that it imports; "": none
  std::optional<FileState> ImportState = {};  ///< nothing: it is missing
  SharedText Text = nullptr;                  ///< null: what the file holds
  SharedText Gzipped = nullptr;               ///< null: there is no compressed form
};

/// Makes the forms of files and keeps them in memory, up to a limit, until the files change. May be used by
/// several threads at once.
class KeptForms {
 public:
  explicit KeptForms(SiteOptions options) : options_(options) {}

  /// The forms of the text file open at `path`; none but the file itself when it is too large, or when too
  /// much is kept already. Never null.
  std::shared_ptr<const FileForms> Find(const std::filesystem::path& path, const OpenFile& file);

 private:
  std::shared_ptr<const FileForms> FindKept(const std::filesystem::path& path);
  FileForms Make(const std::filesystem::path& path, const OpenFile& file);
  std::shared_ptr<const FileForms> Keep(const std::filesystem::path& path, FileForms forms);

  SiteOptions options_;
  Gzip gzip_{12, 0};
  std::mutex mutex_;
  std::size_t bytes_ = 0;                                                   ///< of all kept texts
  std::unordered_map<std::string, std::shared_ptr<const FileForms>> kept_;  ///< by path
};

}  // namespace orlune
