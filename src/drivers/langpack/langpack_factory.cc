#include "drivers/langpack/langpack_factory.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <unordered_map>

#include <toml++/toml.h>

#include "drivers/langpack/preferred_language.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

class LangPack : public Localiser {
 public:
  explicit LangPack(std::unordered_map<int, std::string> texts) : texts_(std::move(texts)) {}

  std::optional<std::string_view> Loadstring(int id) const override {
    const auto found = texts_.find(id);
    if (found == texts_.end()) return std::nullopt;
    return found->second;
  }

 private:
  std::unordered_map<int, std::string> texts_;
};

constexpr std::string_view kPrefix = "OLOR_";
constexpr std::string_view kSuffix = ".Localise";

/// What a hosting page calls the pack of that name.
std::string_view LanguageOf(std::string_view name) {
  return name.substr(kPrefix.size(), name.size() - kPrefix.size() - kSuffix.size());
}

bool IsPackName(std::string_view name) {
  return name.starts_with(kPrefix) && name.ends_with(kSuffix) &&
         name.size() > kPrefix.size() + kSuffix.size() &&
         LanguageOf(name).find_first_not_of(
             "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-") == std::string_view::npos;
}

int ParseId(std::string_view text) {
  int id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  if (error != std::errc() || end != text.data() + text.size())
    throw std::runtime_error("\"" + std::string(text) + "\" is not the number of a text");
  return id;
}

std::unordered_map<int, std::string> ReadTexts(const fs::path& file) {
  std::unordered_map<int, std::string> texts;
  for (const auto& [key, node] : toml::parse_file(file.string())) {
    const auto* text = node.as_string();
    if (text == nullptr) throw std::runtime_error(std::string(key.str()) + " is not a text");
    texts.emplace(ParseId(key.str()), text->get());
  }
  return texts;
}

}  // namespace

LangPackFactory::LangPackFactory(fs::path folder, ProblemSink onProblem)
    : folder_(std::move(folder)), onProblem_(std::move(onProblem)) {}

std::shared_ptr<const Localiser> LangPackFactory::Create(std::string_view programmaticName) {
  const std::lock_guard lock(mutex_);
  const auto known = packs_.find(programmaticName);
  if (known != packs_.end()) return known->second;
  return packs_.emplace(programmaticName, Load(programmaticName)).first->second;
}

std::shared_ptr<const Localiser> LangPackFactory::CreatePreferred(std::string_view acceptLanguage) {
  std::call_once(languagesLoaded_, [this] { languages_ = LoadLanguages(); });
  const auto preferred = PreferredLanguage(acceptLanguage, languages_.Tags);
  return preferred ? languages_.Packs[*preferred] : nullptr;
}

std::shared_ptr<const Localiser> LangPackFactory::Load(std::string_view programmaticName) const {
  const fs::path file = folder_ / std::string(programmaticName).append(".toml");
  std::error_code ignored;
  if (!IsPackName(programmaticName) || !fs::exists(file, ignored)) {
    Report("there is no language pack " + file.string());
    return nullptr;
  }
  try {
    return std::make_shared<LangPack>(ReadTexts(file));
  } catch (const std::exception& error) {
    Report("language pack " + file.string() + " cannot be used: " + error.what());
    return nullptr;
  }
}

void LangPackFactory::Report(const std::string& problem) const {
  std::string languages;
  for (const std::string& name : ProgrammaticNames()) languages.append(" ").append(LanguageOf(name));
  onProblem_(problem + "; its pages are in English. Packs:" + (languages.empty() ? " none" : languages));
}

std::vector<std::string> LangPackFactory::ProgrammaticNames() const {
  std::vector<std::string> names;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_, ignored)) {
    const fs::path& file = entry.path();
    if (file.extension() == ".toml" && IsPackName(file.stem().string()))
      names.push_back(file.stem().string());
  }
  std::ranges::sort(names);
  return names;
}

LangPackFactory::Languages LangPackFactory::LoadLanguages() {
  Languages languages{{"en"}, {nullptr}};
  for (const std::string& name : ProgrammaticNames()) {
    const std::shared_ptr<const Localiser> pack = Create(name);
    const auto tag = pack ? pack->Loadstring(kLanguageTagText) : std::nullopt;
    if (!tag) continue;
    languages.Tags.emplace_back(*tag);
    languages.Packs.push_back(pack);
  }
  return languages;
}

}  // namespace orlune
