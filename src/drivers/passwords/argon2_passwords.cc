#include "drivers/passwords/argon2_passwords.h"

#include <array>
#include <new>
#include <stdexcept>

#include <sodium.h>

#include "base/text.h"
#include "drivers/passwords/random_password.h"

namespace orlune {
namespace {

constexpr std::string_view kHashBegin = "$argon2id$v=19$m=";

/// Reads digits off the front of `text` up to `end`, and both off it; 0 when they are not there.
std::size_t NumberBefore(std::string_view end, std::string_view& text) {
  const std::size_t length = text.find(end);
  if (length == std::string_view::npos) return 0;
  const std::size_t number = WholeNumber<std::size_t>(text.substr(0, length)).value_or(0);
  text.remove_prefix(length + end.size());
  return number;
}

/// The library demands an address, even of no characters.
const char* Characters(std::string_view text) {
  return text.empty() ? "" : text.data();
}

/// A place among those who hash, until its end.
class Turn {
 public:
  explicit Turn(std::counting_semaphore<>& places) : places_(places) { places_.acquire(); }
  ~Turn() { places_.release(); }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  std::counting_semaphore<>& places_;
};

}  // namespace

Argon2Passwords::Argon2Passwords(unsigned atATime, Argon2Cost cost) : cost_(cost), places_(atATime) {
  if (sodium_init() < 0) throw std::runtime_error("cannot hash passwords: no source of randomness");
}

std::string Argon2Passwords::Hash(std::string_view password) {
  const Turn turn(places_);
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str_alg(hash.data(), Characters(password), password.size(), cost_.Passes,
                            cost_.MemoryBytes, crypto_pwhash_ALG_ARGON2ID13) != 0)
    throw std::bad_alloc();
  return hash.data();
}

bool Argon2Passwords::IsHash(std::string_view stored) const {
  if (!stored.starts_with(kHashBegin) || stored.size() >= crypto_pwhash_STRBYTES) return false;
  stored.remove_prefix(kHashBegin.size());
  const Argon2Cost usual;
  const std::size_t kibibytes = NumberBefore(",t=", stored);
  const std::size_t passes = NumberBefore(",p=1$", stored);
  return kibibytes > 0 && kibibytes <= 4 * (usual.MemoryBytes >> 10U) && passes > 0 &&
         passes <= 4 * usual.Passes;
}

bool Argon2Passwords::AreEqual(std::string_view stored, std::string_view password) {
  if (!IsHash(stored)) return stored == password;
  const Turn turn(places_);
  return crypto_pwhash_str_verify(std::string(stored).c_str(), Characters(password), password.size()) == 0;
}

std::string Argon2Passwords::Stamp(std::string_view stored) const {
  std::array<unsigned char, crypto_generichash_BYTES_MIN> digest{};
  crypto_generichash(digest.data(), digest.size(), reinterpret_cast<const unsigned char*>(stored.data()),
                     stored.size(), nullptr, 0);
  std::array<char, 2 * crypto_generichash_BYTES_MIN + 1> text{};
  return sodium_bin2hex(text.data(), text.size(), digest.data(), digest.size());
}

std::string Argon2Passwords::MakeRandom() {
  return MakeRandomPassword();
}

}  // namespace orlune
