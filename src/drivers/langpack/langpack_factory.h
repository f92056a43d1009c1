#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/localiser.h"

namespace orlune {

/// Language packs from the files of one folder: "OLOR_Finnish.Localise" is the file
/// "OLOR_Finnish.Localise.toml", a table of id = "text". Each is read once. May be used by several threads at
/// once.
class LangPackFactory : public LocaliserFactory {
 public:
  /// Told once for each name, with a sentence for the operator, when a pack is missing or broken.
  using ProblemSink = std::function<void(const std::string& problem)>;

  LangPackFactory(std::filesystem::path folder, ProblemSink onProblem);
  std::shared_ptr<const Localiser> Create(std::string_view programmaticName) override;
  /// Knows the packs that were there when it was first asked and have a language tag.
  std::shared_ptr<const Localiser> CreatePreferred(std::string_view acceptLanguage) override;

 private:
  /// The languages to choose from: English, whose pack is null, and those of the packs.
  struct Languages {
    std::vector<std::string> Tags;
    std::vector<std::shared_ptr<const Localiser>> Packs;
  };

  std::shared_ptr<const Localiser> Load(std::string_view programmaticName) const;
  std::vector<std::string> ProgrammaticNames() const;
  Languages LoadLanguages();
  void Report(const std::string& problem) const;

  std::filesystem::path folder_;
  ProblemSink onProblem_;
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<const Localiser>, std::less<>> packs_;
  std::once_flag languagesLoaded_;
  Languages languages_;
};

}  // namespace orlune
