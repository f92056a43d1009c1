#include <gtest/gtest.h>

#include "drivers/langpack/langpack_factory.h"
#include "support/temporary_folder.h"
#include "support/write_file.h"

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

TEST(LangPackFactory, CannotCreateOthers) {
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

}  // namespace
}  // namespace orlune::testing
