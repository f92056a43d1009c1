#include "logins/login_limiter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/ip_network.h"
#include "base/log_text.h"
#include "base/text.h"

namespace orlune {
namespace {

/// What a successful login at a new place takes off the failures of its address. Colleagues who mistype their
/// passwords do not add up, and a guesser has no more such places than accounts of their own.
constexpr int kFailuresMadeUpFor = 10;

/// A text that is no address counts as it is.
std::string NetworkOf(std::string_view address) {
  const auto parsed = IpAddress::Parse(address);
  return parsed ? parsed->VisitorNetwork().Text() : std::string(address);
}

/// The three keys under which an attempt is counted; no name is long or contains a line end in them.
struct Keys {
  explicit Keys(const LoginAttempt& attempt)
      : Address(NetworkOf(attempt.Address)),
        Account(ToLower(OneLine(attempt.Name)).append("\n").append(attempt.Database)),
        Place(Account + "\n" + Address) {}

  std::string Address;
  std::string Account;
  std::string Place;
};

}  // namespace

LoginLimiter::LoginLimiter(spdlog::logger& log, LoginLimits limits, TimeSource now)
    : log_(log), limits_(limits), now_(std::move(now)) {}

std::chrono::seconds LoginLimiter::Admit(const LoginAttempt& attempt) {
  const Keys keys(attempt);
  const std::lock_guard lock(mutex_);
  const Entry* place = Find(keys.Place);
  const bool isKnown = place != nullptr && place->IsKnown;
  const auto pause = isKnown ? PauseOf(keys.Place) : std::max(PauseOf(keys.Account), PauseOf(keys.Address));
  if (pause > std::chrono::seconds(0)) return pause;
  if (isKnown) {
    Count(keys.Place, limits_.TriesOfName);
  } else {
    Count(keys.Account, limits_.TriesOfName);
    Count(keys.Address, limits_.TriesOfAddress);
  }
  return std::chrono::seconds(0);
}

void LoginLimiter::Failed(const LoginAttempt& attempt) {
  // The address comes first, where a name cannot feign another one to a program that reads the log.
  log_.warn("login failed from {} for \"{}\"", attempt.Address, OneLine(attempt.Name));
}

void LoginLimiter::Succeeded(const LoginAttempt& attempt) {
  const Keys keys(attempt);
  const std::lock_guard lock(mutex_);
  Entry& place = FindOrAdd(keys.Place);
  if (!std::exchange(place.IsKnown, true)) {
    Forget(keys.Account);
    if (Entry* address = Find(keys.Address)) {
      address->Failures = std::max(address->Failures - kFailuresMadeUpFor, 0);
      address->PausedUntil = {};
    }
  }
  place.Failures = 0;
  place.PausedUntil = {};
  place.ExpiresAt = now_() + limits_.KnownFor;
}

LoginLimiter::Entry* LoginLimiter::Find(const std::string& key) {
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  if (found->second->ExpiresAt <= now_()) {
    Forget(key);
    return nullptr;
  }
  entries_.splice(entries_.begin(), entries_, found->second);
  return &entries_.front();
}

LoginLimiter::Entry& LoginLimiter::FindOrAdd(const std::string& key) {
  if (Entry* entry = Find(key)) return *entry;
  if (entries_.size() >= limits_.Entries) Forget(std::string(entries_.back().Key));
  entries_.push_front({.Key = key, .PausedUntil = {}, .ExpiresAt = {}});
  byKey_.emplace(entries_.front().Key, entries_.begin());
  return entries_.front();
}

void LoginLimiter::Forget(const std::string& key) {
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return;
  const auto entry = found->second;
  byKey_.erase(found);
  entries_.erase(entry);
}

std::chrono::seconds LoginLimiter::PauseOf(const std::string& key) {
  const Entry* entry = Find(key);
  if (entry == nullptr) return std::chrono::seconds(0);
  const auto pause = std::chrono::ceil<std::chrono::seconds>(entry->PausedUntil - now_());
  return std::max(pause, std::chrono::seconds(0));
}

void LoginLimiter::Count(const std::string& key, int tries) {
  Entry& entry = FindOrAdd(key);
  const auto now = now_();
  entry.ExpiresAt = std::max(entry.ExpiresAt, now + limits_.Memory);
  const int doublings = ++entry.Failures - tries;
  if (doublings < 0) return;
  constexpr int kMostDoublings = 30;
  entry.PausedUntil =
      now + std::min(limits_.LongestPause, limits_.FirstPause * (1 << std::min(doublings, kMostDoublings)));
}

}  // namespace orlune
