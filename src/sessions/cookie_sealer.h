#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/named_texts.h"

namespace orlune {

using SecretKey = std::array<unsigned char, 32>;

/// Reads the key of `file`; a file that is missing is made with a random key, readable by its owner alone.
/// Throws ConfigurationError when that is impossible or the file holds no key.
SecretKey LoadSecretKey(const std::filesystem::path& file);

/// What a sealed cookie holds.
struct CookieContents {
  NamedTexts SubKeys;
  std::optional<Date> Expires;  ///< the day with whose beginning the cookie reads as absent
};

/// Closes cookies with authenticated encryption, so that a browser can keep them but neither read nor change
/// them, nor use one at another page or under another name. May be used by several threads at once.
class CookieSealer {
 public:
  explicit CookieSealer(const SecretKey& key);

  /// The cookie's value as base64url text.
  std::string Seal(const CookieContents& contents, std::string_view cookieName,
                   std::string_view pagePath) const;
  /// Nothing when `sealed` was not made by this key for this cookie and page, or has expired on `today`.
  std::optional<CookieContents> Open(std::string_view sealed, std::string_view cookieName,
                                     std::string_view pagePath, Date today) const;

 private:
  SecretKey key_;
};

}  // namespace orlune
