#include <algorithm>
#include <regex>

#include <gtest/gtest.h>

#include "drivers/langpack/langpack_factory.h"
#include "texts/english_texts.h"

namespace orlune::testing {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> PackFiles() {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(ORLUNE_LANGUAGE_FOLDER)) files.push_back(entry.path());
  return files;
}

std::shared_ptr<const Localiser> ReadPack(const fs::path& file) {
  LangPackFactory factory(file.parent_path(), [](const std::string& problem) { ADD_FAILURE() << problem; });
  return factory.Create(file.stem().string());
}

/// What a translator has to keep: placeholders, "\n" pairs and tags, whatever their order.
std::vector<std::string> Marks(const std::string& text) {
  static const std::regex kMark(R"(%[a-z]|\\.|<[^>]*>)");
  std::vector<std::string> marks(std::sregex_token_iterator(text.begin(), text.end(), kMark), {});
  std::sort(marks.begin(), marks.end());
  return marks;
}

/// The blanks before and behind a text.
std::string Margins(const std::string& text) {
  return text.substr(0, text.find_first_not_of(' ')) + "|" + text.substr(text.find_last_not_of(' ') + 1);
}

void CheckText(const std::string& text, const std::string& english) {
  SCOPED_TRACE(text);
  EXPECT_EQ(Marks(text), Marks(english));
  EXPECT_EQ(Margins(text), Margins(english));
  EXPECT_EQ(text.ends_with("\\n"), english.ends_with("\\n"));
  EXPECT_NE(text, "");
}

TEST(LanguagePacks, TranslateEveryTextInTheFormOfTheEnglish) {
  constexpr int kBeyondAllTexts = 10'000;
  const auto files = PackFiles();
  ASSERT_FALSE(files.empty());
  for (const fs::path& file : files) {
    SCOPED_TRACE(file.filename());
    const auto pack = ReadPack(file);
    if (!pack) continue;
    for (int id = 0; id < kBeyondAllTexts; ++id) {
      SCOPED_TRACE(id);
      const auto text = pack->Loadstring(id);
      const std::string english(EnglishText(static_cast<Text>(id)));
      EXPECT_EQ(text.has_value(), !english.empty());
      if (text && !english.empty()) CheckText(std::string(*text), english);
    }
  }
}

}  // namespace
}  // namespace orlune::testing
