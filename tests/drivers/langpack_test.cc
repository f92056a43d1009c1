#include <algorithm>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "drivers/langpack/langpack_factory.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"
#include "texts/english_texts.h"

namespace orlune::testing {
namespace {

TEST(LangPackFactory, ReadsAPackOnce) {
  const TemporaryFolder folder;
  WriteFile(folder.Path() / "OLOR_Suomi-2.Localise.toml", "100 = \"KIRJAUDU\"\n\"810\" = \"%s ei ole\\n\"\n");
  std::string problems;
  LangPackFactory factory(folder.Path(), [&problems](const std::string& problem) { problems += problem; });
  const auto pack = factory.Create("OLOR_Suomi-2.Localise");
  ASSERT_NE(pack, nullptr) << problems;
  EXPECT_EQ(pack->Loadstring(100), "KIRJAUDU");
  EXPECT_EQ(pack->Loadstring(810), "%s ei ole\n");
  EXPECT_EQ(pack->Loadstring(101), std::nullopt);
  EXPECT_EQ(factory.Create("OLOR_Suomi-2.Localise"), pack);
}

TEST(LangPackFactory, ReturnsNullForInvalidPacks) {
  const TemporaryFolder folder;
  WriteFile(folder.Path() / "OLOR_Broken.Localise.toml", "100 = \n");
  WriteFile(folder.Path() / "OLOR_Number.Localise.toml", "100 = 5\n");
  WriteFile(folder.Path() / "OLOR_Name.Localise.toml", "title = \"x\"\n");
  WriteFile(folder.Path() / "OLOR_.Localise.toml", "100 = \"x\"\n");
  WriteFile(folder.Path() / "OLOR_a.b.Localise.toml", "100 = \"x\"\n");
  WriteFile(folder.Path() / "Good.toml", "100 = \"x\"\n");
  for (const char* name :
       {"OLOR_Broken.Localise", "OLOR_Number.Localise", "OLOR_Name.Localise", "OLOR_Missing.Localise",
        "OLOR_.Localise", "OLOR_a.b.Localise", "Good", "", "OLOR_/../Good.Localise"}) {
    int problems = 0;
    LangPackFactory factory(folder.Path(), [&problems](const std::string&) { ++problems; });
    EXPECT_EQ(factory.Create(name), nullptr) << name;
    EXPECT_EQ(factory.Create(name), nullptr) << name;
    EXPECT_EQ(problems, 1) << name;
  }
}

TEST(LangPackFactory, PrefersWhatTheBrowserPrefers) {
  const TemporaryFolder folder;
  WriteFile(folder.Path() / "OLOR_German.Localise.toml", "2000 = 'de'\n100 = 'German'\n");
  WriteFile(folder.Path() / "OLOR_Norwegian.Localise.toml", "2000 = 'nb'\n100 = 'Norwegian'\n");
  WriteFile(folder.Path() / "OLOR_Brazilian.Localise.toml", "2000 = 'pt-BR'\n100 = 'Brazilian'\n");
  WriteFile(folder.Path() / "OLOR_Portuguese.Localise.toml", "2000 = 'pt'\n100 = 'Portuguese'\n");
  WriteFile(folder.Path() / "OLOR_Untagged.Localise.toml", "100 = 'Untagged'\n");
  LangPackFactory factory(folder.Path(), [](const std::string& problem) { ADD_FAILURE() << problem; });
  const std::pair<const char*, const char*> cases[] = {
      {"de", "German"},
      {"DE-at,en;q=0.9", "German"},
      {"en-GB,en;q=0.9,de;q=0.8", "English"},
      {"de;q=0.8, en;q=0.805", "English"},
      {"fr, de;q=0.1", "German"},
      {"nn-NO", "Norwegian"},
      {"no", "Norwegian"},
      {"pt", "Portuguese"},
      {"pt-BR", "Brazilian"},
      {"pt-AO", "Portuguese"},
      {"de;q=0", "English"},
      {"de;q=2, nb;q=0.5", "Norwegian"},
      {"de;q=0,5", "English"},
      {"*", "English"},
      {"", "English"},
      {";;,,=;q=,\t", "English"},
      {"d", "English"},
  };
  for (const auto& [header, expected] : cases) {
    const auto pack = factory.CreatePreferred(header);
    EXPECT_EQ(pack ? pack->Loadstring(100) : "English", expected) << header;
  }
}

namespace fs = std::filesystem;

std::shared_ptr<const Localiser> ReadPack(const fs::path& file) {
  LangPackFactory factory(file.parent_path(), [](const std::string& problem) { ADD_FAILURE() << problem; });
  return factory.Create(file.stem().string());
}

/// What a translation must keep: placeholders, "\n" pairs and tags, in any order.
std::vector<std::string> Marks(const std::string& text) {
  static const std::regex kMark(R"(%[a-z]|\\.|<[^>]*>)");
  std::vector<std::string> marks(std::sregex_token_iterator(text.begin(), text.end(), kMark), {});
  std::sort(marks.begin(), marks.end());
  return marks;
}

/// The leading and trailing spaces of a text.
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
  ASSERT_FALSE(fs::is_empty(ORLUNE_LANGUAGE_FOLDER));
  std::set<std::string> tags{"en"};
  for (const fs::path& file : fs::directory_iterator(ORLUNE_LANGUAGE_FOLDER)) {
    SCOPED_TRACE(file.filename());
    const auto pack = ReadPack(file);
    if (!pack) continue;
    EXPECT_TRUE(tags.emplace(pack->Loadstring(kLanguageTagText).value_or("en")).second);
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
