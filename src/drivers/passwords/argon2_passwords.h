#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

#include "platform/passwords.h"

namespace orlune {

/// What one hash costs; the defaults are those that OWASP's "Password Storage Cheat Sheet" asks for at least.
struct Argon2Cost {
  std::size_t MemoryBytes = std::size_t{19} << 20U;
  unsigned long long Passes = 2;
};

/// Hashes with argon2id (RFC 9106), in libsodium's text form "$argon2id$v=19$m=19456,t=2,p=1$salt$hash". A
/// stored text of that form counts as a hash only while it costs at most four times the default in memory and
/// in passes: whoever can store one could otherwise make the server compute for hours.
class Argon2Passwords : public Passwords {
 public:
  /// Computes at most `atATime` hashes at a time, and so takes at most so many times the memory of one;
  /// whoever comes later waits.
  explicit Argon2Passwords(unsigned atATime = 1, Argon2Cost cost = {});

  std::string Hash(std::string_view password) override;
  bool IsHash(std::string_view stored) const override;
  bool AreEqual(std::string_view stored, std::string_view password) override;
  std::string Stamp(std::string_view stored) const override;
  std::string MakeRandom() override;

 private:
  const Argon2Cost cost_;
  std::counting_semaphore<> places_;
};

}  // namespace orlune
