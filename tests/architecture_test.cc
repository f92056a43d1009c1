#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

/// A line of the table in docs/architecture.md.
struct Folder {
  Names MayInclude;
  Names Libraries;  ///< third-party headers that it may include, by first folder or name
};

std::vector<std::string> Matches(const std::string& text, const std::regex& pattern) {
  std::vector<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
    found.push_back((*match)[1]);
  return found;
}

Names CodeNames(const std::string& cell) {
  static const std::regex kCode("`([^`]+)`");
  const auto names = Matches(cell, kCode);
  return {names.begin(), names.end()};
}

/// The table with the lines: | `folder` | purpose | folders that it may include | libraries |
std::map<std::string, Folder> AllowedIncludes() {
  static const std::regex kCell(R"(\|([^|]*))");
  std::map<std::string, Folder> folders;
  std::ifstream document(ORLUNE_REPOSITORY "/docs/architecture.md");
  for (std::string line; std::getline(document, line);) {
    if (!line.starts_with("| `")) continue;
    const auto cells = Matches(line, kCell);
    if (cells.size() < 4) continue;
    folders[*CodeNames(cells[0]).begin()] = {CodeNames(cells[2]), CodeNames(cells[3])};
  }
  return folders;
}

struct Include {
  std::string File;
  std::string Target;
  bool IsQuoted;
};

std::vector<Include> AllIncludes() {
  static const std::regex kInclude(R"re(^#include\s*(["<])([^">]+)[">])re");
  std::vector<Include> includes;
  const fs::path source = ORLUNE_REPOSITORY "/src";
  for (const auto& entry : fs::recursive_directory_iterator(source)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cc") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) {
      std::smatch match;
      if (std::regex_search(line, match, kInclude))
        includes.push_back({fs::relative(entry.path(), source).string(), match[2], match[1] == "\""});
    }
  }
  return includes;
}

std::string FolderOf(const std::string& file) {
  return fs::path(file).parent_path().string();
}

/// The library that a header in angle brackets belongs to; "" for the C++ standard library.
std::string LibraryOf(const std::string& header) {
  if (const std::size_t slash = header.find('/'); slash != std::string::npos)
    return header.substr(0, slash + 1);
  return header.ends_with(".h") ? header : "";
}

/// Whether `from` may include `to` directly or indirectly.
bool Reaches(const std::map<std::string, Folder>& folders, const std::string& from, const std::string& to,
             Names& visited) {
  for (const std::string& next : folders.at(from).MayInclude) {
    if (next == to) return true;
    if (visited.insert(next).second && folders.contains(next) && Reaches(folders, next, to, visited))
      return true;
  }
  return false;
}

TEST(Architecture, FoldersIncludeWhatTheTableAllowsAndNothingElse) {
  const auto folders = AllowedIncludes();
  std::map<std::string, Folder> used;
  for (const Include& include : AllIncludes()) {
    const std::string from = FolderOf(include.File);
    ASSERT_TRUE(folders.contains(from))
        << "docs/architecture.md has no line for the folder of " << include.File;
    const std::string to = include.IsQuoted ? FolderOf(include.Target) : LibraryOf(include.Target);
    if (to.empty() || to == from) continue;
    const Names& allowed = include.IsQuoted ? folders.at(from).MayInclude : folders.at(from).Libraries;
    EXPECT_TRUE(allowed.contains(to)) << include.File << " includes " << include.Target;
    (include.IsQuoted ? used[from].MayInclude : used[from].Libraries).insert(to);
  }
  for (const auto& [name, folder] : folders) {
    EXPECT_EQ(folder.MayInclude, used[name].MayInclude) << name << " is allowed more than it uses";
    EXPECT_EQ(folder.Libraries, used[name].Libraries) << name << " is allowed more than it uses";
  }
}

TEST(Architecture, NoFoldersIncludeEachOtherInACircle) {
  const auto folders = AllowedIncludes();
  ASSERT_GT(folders.size(), 20U);
  for (const auto& [name, folder] : folders) {
    Names visited;
    EXPECT_FALSE(Reaches(folders, name, name, visited)) << name;
  }
}

}  // namespace
