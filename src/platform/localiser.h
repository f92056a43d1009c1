#pragma once

#include <memory>
#include <optional>
#include <string_view>

namespace orlune {

/// The number of the text that is a pack's language tag, such as "de" (BCP 47).
inline constexpr int kLanguageTagText = 2000;

/// The texts of one language pack. Thread-safe.
class Localiser {
 public:
  virtual ~Localiser() = default;
  /// The text numbered `id`; nothing when the pack lacks it. The view is valid as long as the pack.
  virtual std::optional<std::string_view> Loadstring(int id) const = 0;
};

/// Creates language packs by their programmatic names, such as "OLOR_Finnish.Localise".
class LocaliserFactory {
 public:
  virtual ~LocaliserFactory() = default;
  /// The pack of that name, or null when it cannot be created.
  virtual std::shared_ptr<const Localiser> Create(std::string_view programmaticName) = 0;
  /// The pack in the language that a browser's header "Accept-Language" prefers; null for English, and when
  /// there is no pack in any of its languages.
  virtual std::shared_ptr<const Localiser> CreatePreferred(std::string_view acceptLanguage) = 0;
};

}  // namespace orlune
