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

/// How many hashes are computed at a time, and how many more threads may wait for their turn. Together less
/// than the threads that answer requests, so that a crowd at the login form stops nobody else.
struct HashingLimits {
  unsigned Running = 1;
  unsigned Waiting = 1;
};

/// Hashes with argon2id (RFC 9106), in libsodium's text form "$argon2id$v=19$m=19456,t=2,p=1$salt$hash". A
/// stored text of that form counts as a hash only while it costs at most four times the default in memory and
/// in passes: whoever can store one could otherwise make the server compute for hours.
class Argon2Passwords : public Passwords {
 public:
  explicit Argon2Passwords(HashingLimits limits = {}, Argon2Cost cost = {});

  std::string Hash(std::string_view password) override;
  bool IsHash(std::string_view stored) const override;
  bool AreEqual(std::string_view stored, std::string_view password) override;
  std::string Stamp(std::string_view stored) const override;
  std::string MakeRandom() override;

 private:
  class Turn;

  const HashingLimits limits_;
  const Argon2Cost cost_;
  std::mutex mutex_;
  std::condition_variable ended_;
  unsigned running_ = 0;
  unsigned waiting_ = 0;
};

}  // namespace orlune
