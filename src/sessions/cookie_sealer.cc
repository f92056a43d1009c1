#include "sessions/cookie_sealer.h"

#include <stdexcept>

#include <sodium.h>

#include "base/text.h"
#include "base/url_encoding.h"

namespace orlune {
namespace {

constexpr std::size_t kNonceSize = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t kTagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr int kBase64 = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
static_assert(std::tuple_size_v<SecretKey> == crypto_aead_xchacha20poly1305_ietf_KEYBYTES);

unsigned char* Bytes(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
}
const unsigned char* Bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string Binding(std::string_view cookieName, std::string_view pagePath) {
  return std::string(cookieName).append(1, '\0').append(pagePath);
}

std::string EncodeBase64(const std::string& bytes) {
  std::string text(sodium_base64_encoded_len(bytes.size(), kBase64), '\0');
  sodium_bin2base64(text.data(), text.size(), Bytes(bytes), bytes.size(), kBase64);
  text.pop_back();
  return text;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
  std::string bytes(text.size(), '\0');
  std::size_t length = 0;
  if (sodium_base642bin(Bytes(bytes), bytes.size(), text.data(), text.size(), nullptr, &length, nullptr,
                        kBase64) != 0)
    return std::nullopt;
  bytes.resize(length);
  return bytes;
}

// "[days since 1970 of the expiry]\n[sub-keys as a query]".
std::string WriteContents(const CookieContents& contents) {
  std::string text;
  if (contents.Expires) text = std::to_string(contents.Expires->time_since_epoch().count());
  return text.append(1, '\n').append(EncodeQuery(contents.SubKeys));
}

CookieContents ReadContents(std::string_view text) {
  const std::string_view day = text.substr(0, text.find('\n'));
  CookieContents contents{DecodeQuery(text.substr(day.size() + 1)), std::nullopt};
  if (const auto days = WholeNumber(day)) contents.Expires = Date(std::chrono::days(*days));
  return contents;
}

}  // namespace

CookieSealer::CookieSealer(const SecretKey& key) : key_(key) {
  if (sodium_init() < 0) throw std::runtime_error("cannot initialise libsodium");
}

std::string CookieSealer::Seal(const CookieContents& contents, std::string_view cookieName,
                               std::string_view pagePath) const {
  const std::string plain = WriteContents(contents);
  const std::string binding = Binding(cookieName, pagePath);
  std::string sealed(kNonceSize + plain.size() + kTagSize, '\0');
  randombytes_buf(sealed.data(), kNonceSize);
  crypto_aead_xchacha20poly1305_ietf_encrypt(Bytes(sealed) + kNonceSize, nullptr, Bytes(plain), plain.size(),
                                             Bytes(binding), binding.size(), nullptr, Bytes(sealed),
                                             key_.data());
  return EncodeBase64(sealed);
}

std::optional<CookieContents> CookieSealer::Open(std::string_view sealed, std::string_view cookieName,
                                                 std::string_view pagePath, Date today) const {
  const std::optional<std::string> bytes = DecodeBase64(sealed);
  if (!bytes || bytes->size() < kNonceSize + kTagSize) return std::nullopt;
  const std::string binding = Binding(cookieName, pagePath);
  std::string plain(bytes->size() - kNonceSize - kTagSize, '\0');
  if (crypto_aead_xchacha20poly1305_ietf_decrypt(Bytes(plain), nullptr, nullptr, Bytes(*bytes) + kNonceSize,
                                                 bytes->size() - kNonceSize, Bytes(binding), binding.size(),
                                                 Bytes(*bytes), key_.data()) != 0)
    return std::nullopt;
  CookieContents contents = ReadContents(plain);
  if (contents.Expires && *contents.Expires <= today) return std::nullopt;
  return contents;
}

}  // namespace orlune
