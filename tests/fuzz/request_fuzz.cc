#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/url_encoding.h"
#include "base/utf8.h"
#include "fuzz/require.h"
#include "http/cookies.h"
#include "http/static_files.h"
#include "sessions/cookie_sealer.h"

namespace {

using orlune::Date;

bool IsClean(const std::string& text) {
  return text.find('\0') == std::string::npos && orlune::RepairUtf8(text) == text;
}

void CheckTexts(std::string_view input) {
  Require(IsClean(orlune::RepairUtf8(std::string(input))));
  const orlune::NamedTexts texts = orlune::DecodeQuery(input);
  for (const auto& [name, value] : texts) Require(IsClean(name) && IsClean(value));
  const orlune::NamedTexts again = orlune::DecodeQuery(orlune::EncodeQuery(texts));
  Require(again.size() == texts.size());
  for (const auto& [name, value] : texts) Require(again.Find(name) == value);
  for (const char c : orlune::EncodeUrl(input)) Require(c > ' ' && c < '\x7F');
}

void CheckCookies(std::string_view input) {
  const orlune::CookieSealer sealer(orlune::SecretKey{1});
  for (const std::string_view value : orlune::CookieValues(input, "a")) {
    Require(value.data() >= input.data() && value.data() + value.size() <= input.data() + input.size());
    Require(value.find(';') == std::string_view::npos);
  }
  Require(!sealer.Open(input, "OLOR", "/", Date()));
  orlune::CookieContents contents;
  contents.SubKeys.Set("Login", orlune::RepairUtf8(std::string(input)));
  const auto opened = sealer.Open(sealer.Seal(contents, "OLOR", "/"), "OLOR", "/", Date());
  Require(opened && opened->SubKeys.Find("Login") == contents.SubKeys.Find("Login"));
}

void CheckPaths(std::string_view input) {
  static const std::filesystem::path kFolder = std::filesystem::canonical("/usr/share");
  static const orlune::StaticFiles kFiles(kFolder);
  const std::string path = "/" + std::string(input);
  for (const std::filesystem::path& found :
       {kFiles.Find(path), kFiles.Find(input), kFiles.FindLinked("/a/b.asp", input)})
    Require(found.empty() || *found.lexically_relative(kFolder).begin() != "..");
}

void CheckTags(std::string_view input) {
  constexpr std::string_view kTag = "\"1f-2e\"";
  if (orlune::NamesTag(input, kTag))
    Require(input.find('*') != std::string_view::npos || input.find(kTag) != std::string_view::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(bytes), size);
  CheckTexts(input);
  CheckCookies(input);
  CheckPaths(input);
  CheckTags(input);
  return 0;
}
