#include "drivers/passwords/sodium_secrets.h"

#include <array>
#include <cstdint>
#include <stdexcept>

#include <sodium.h>

namespace orlune {

SodiumSecrets::SodiumSecrets() {
  if (sodium_init() < 0) throw std::runtime_error("cannot make secrets: no source of randomness");
}

std::string SodiumSecrets::MakeSecret() {
  constexpr std::string_view kLetters = "abcdefghijkmnpqrstuvwxyz23456789";
  constexpr int kLength = 26;
  std::string secret;
  for (int i = 0; i < kLength; ++i)
    secret += kLetters[randombytes_uniform(static_cast<std::uint32_t>(kLetters.size()))];
  return secret;
}

std::string SodiumSecrets::Digest(std::string_view text) const {
  constexpr std::size_t kBytes = 32;
  std::array<unsigned char, kBytes> digest{};
  crypto_generichash(digest.data(), digest.size(), reinterpret_cast<const unsigned char*>(text.data()),
                     text.size(), nullptr, 0);
  std::array<char, 2 * kBytes + 1> hex{};
  return sodium_bin2hex(hex.data(), hex.size(), digest.data(), digest.size());
}

}  // namespace orlune
