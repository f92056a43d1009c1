#include "http/basic_credentials.h"

#include <gtest/gtest.h>

namespace orlune::testing {
namespace {

TEST(BasicCredentials, AreReadOrRefusedWhole) {
  const struct {
    const char* Name;
    std::string Header, Expected = "";
  } cases[] = {{"plain", "Basic YW5uOnNlY3JldA==", "ann|secret"},
               {"any case, no padding, blanks", "bASIC  YW5uOnNlY3JldA ", "ann|secret"},
               {"colons in the password", "Basic YW5uOmE6Yjo=", "ann|a:b:"},
               {"UTF-8", "Basic asO4cm46w6k=", "j\xC3\xB8rn|\xC3\xA9"},
               {"no password", "Basic YW5uOg==", "ann|"},
               {"no name", "Basic OnNlY3JldA=="},
               {"no colon", "Basic YW5u"},
               {"Latin-1", "Basic avhybjp4"},
               {"NUL", "Basic YW5uAGI6eA=="},
               {"line end", "Basic YW5uOngKeQ=="},
               {"no base64", "Basic YW5u*nNl"},
               {"incomplete", "Basic YW5uO"},
               {"another scheme", "Bearer YW5uOnNlY3JldA=="},
               {"scheme alone", "Basic"},
               {"nothing", ""},
               {"too long", "Basic YW5uOnNlY3JldA==" + std::string(3000, ' ')}};
  for (const auto& c : cases) {
    const auto read = ReadBasicCredentials(c.Header);
    EXPECT_EQ(read ? read->Name + "|" + read->Password : "", c.Expected) << c.Name;
  }
}

}  // namespace
}  // namespace orlune::testing
