#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const std::set<std::string> kComponentFolders{"component", "frame",       "data",       "session",
                                              "events",    "views",       "eventpages", "groupviews",
                                              "messages",  "preferences", "admin",      "resources"};

/// 0 for the platform's interfaces, 1 for the system itself, 2 for what is around it.
int Ring(const std::string& folder) {
  if (folder == "platform") return 0;
  return kComponentFolders.contains(folder) ? 1 : 2;
}

struct Include {
  std::string File;
  std::string Target;
  bool IsQuoted;
};

std::vector<Include> AllIncludes() {
  static const std::regex kInclude(R"re(^#include\s*(["<])([^">]+)[">])re");
  std::vector<Include> includes;
  const fs::path source = ORLUNE_SOURCE_FOLDER;
  for (const auto& entry : fs::recursive_directory_iterator(source)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cc") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) {
      std::smatch match;
      if (!std::regex_search(line, match, kInclude)) continue;
      includes.push_back({fs::relative(entry.path(), source).string(), match[2], match[1] == "\""});
    }
  }
  return includes;
}

std::string TopFolder(const std::string& path) {
  return path.substr(0, path.find('/'));
}

TEST(Architecture, IncludesPointInward) {
  const auto includes = AllIncludes();
  ASSERT_GT(includes.size(), 100U);
  for (const Include& include : includes) {
    const int from = Ring(TopFolder(include.File));
    if (include.IsQuoted) {
      EXPECT_LE(Ring(TopFolder(include.Target)), from) << include.File << " includes " << include.Target;
    } else if (from < 2) {
      EXPECT_EQ(include.Target.find_first_of("./"), std::string::npos)
          << include.File << " includes <" << include.Target << ">, which is not of the standard library";
    }
  }
}

/// The pages stand above what they are made of: neither the frame nor the data, session and event folders
/// know one.
TEST(Architecture, FoundationsKnowNoPage) {
  const std::map<std::string, std::set<std::string>> allowed{
      {"resources", {"resources"}},
      {"frame", {"platform", "component", "frame", "resources"}},
      {"data", {"platform", "component", "frame", "data"}},
      {"session", {"platform", "component", "frame", "data", "session"}},
      {"events", {"platform", "component", "frame", "data", "session", "events"}},
  };
  for (const Include& include : AllIncludes()) {
    const auto rule = allowed.find(TopFolder(include.File));
    if (rule == allowed.end() || !include.IsQuoted) continue;
    EXPECT_TRUE(rule->second.contains(TopFolder(include.Target)))
        << include.File << " includes " << include.Target;
    EXPECT_NE(include.Target, "component/orlune.h") << include.File;
  }
}

}  // namespace
