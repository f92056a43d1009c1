#include "drivers/langpack/langpack_factory.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <unordered_map>

#include <toml++/toml.h>

namespace orlune {
namespace {

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

bool IsPackName(std::string_view name) {
  constexpr std::string_view kPrefix = "OLOR_";
  constexpr std::string_view kSuffix = ".Localise";
  if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix) ||
      name.size() <= kPrefix.size() + kSuffix.size())
    return false;
  const std::string_view language =
      name.substr(kPrefix.size(), name.size() - kPrefix.size() - kSuffix.size());
  return language.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-") ==
         std::string_view::npos;
}

int ParseId(std::string_view text) {
  int id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  if (error != std::errc() || end != text.data() + text.size())
    throw std::runtime_error("\"" + std::string(text) + "\" is not the number of a text");
  return id;
}

std::unordered_map<int, std::string> ReadTexts(const std::filesystem::path& file) {
  std::unordered_map<int, std::string> texts;
  for (const auto& [key, node] : toml::parse_file(file.string())) {
    const auto* text = node.as_string();
    if (text == nullptr) throw std::runtime_error(std::string(key.str()) + " is not a text");
    texts.emplace(ParseId(key.str()), text->get());
  }
  return texts;
}

}  // namespace

LangPackFactory::LangPackFactory(std::filesystem::path folder, ProblemSink onProblem)
    : folder_(std::move(folder)), onProblem_(std::move(onProblem)) {}

std::shared_ptr<const Localiser> LangPackFactory::Create(std::string_view programmaticName) {
  const std::lock_guard lock(mutex_);
  const auto known = packs_.find(programmaticName);
  if (known != packs_.end()) return known->second;
  return packs_.emplace(programmaticName, Load(programmaticName)).first->second;
}

std::shared_ptr<const Localiser> LangPackFactory::Load(std::string_view programmaticName) const {
  if (!IsPackName(programmaticName)) {
    onProblem_("\"" + std::string(programmaticName) + "\" is not the name of a language pack");
    return nullptr;
  }
  const std::filesystem::path file = folder_ / std::string(programmaticName).append(".toml");
  try {
    return std::make_shared<LangPack>(ReadTexts(file));
  } catch (const std::exception& error) {
    onProblem_("language pack " + file.string() + " cannot be used: " + error.what());
    return nullptr;
  }
}

}  // namespace orlune
