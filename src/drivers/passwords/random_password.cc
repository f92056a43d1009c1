#include "drivers/passwords/random_password.h"

#include <cstdint>
#include <stdexcept>
#include <string_view>

#include <sodium.h>

namespace orlune {

std::string MakeRandomPassword() {
  constexpr std::string_view kLetters = "abcdefghjkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789";
  constexpr int kLength = 14;
  if (sodium_init() < 0) throw std::runtime_error("cannot generate a password: no source of randomness");
  std::string password;
  for (int i = 0; i < kLength; ++i)
    password += kLetters[randombytes_uniform(static_cast<std::uint32_t>(kLetters.size()))];
  return password;
}

}  // namespace orlune
