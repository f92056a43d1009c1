#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/named_texts.h"

namespace orlune {

using SecretKey = std::array<unsigned char, 32>;

struct CookieContents {
  NamedTexts SubKeys;
  std::optional<Date> Expires;  ///< invalid from the beginning of this day
};

/// Encrypts and authenticates cookies, so that a browser can keep them but neither read nor change them, nor
/// use one at another page or under another name. May be used by several threads at once.
class CookieSealer {
 public:
  explicit CookieSealer(const SecretKey& key);

  /// The cookie's value, in base64url.
  std::string Seal(const CookieContents& contents, std::string_view cookieName,
                   std::string_view pagePath) const;
  /// Nothing when `sealed` was not made with this key for this cookie and page, or has expired on `today`.
  std::optional<CookieContents> Open(std::string_view sealed, std::string_view cookieName,
                                     std::string_view pagePath, Date today) const;

 private:
  SecretKey key_;
};

}  // namespace orlune
