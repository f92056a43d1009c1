#include "drivers/postgresql/kept_replies.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include <libpq-fe.h>

namespace orlune::postgresql {

namespace {

/// What the list, the map with its buckets, the counts of references and the allocations themselves take for
/// one entry.
constexpr std::size_t kOverhead = 250;

/// What an entry keeps alive of the statement that was translated for it, beyond its SQL.
constexpr std::size_t kStatementOverhead = 1000;

/// A snapshot's xmax, and minus the number of transactions below it that are running. Rises.
using Progress = std::pair<std::uint64_t, std::ptrdiff_t>;

Progress ProgressOf(std::string_view snapshot) {
  std::uint64_t end = 0;
  snapshot.remove_prefix(std::min(snapshot.size(), snapshot.find(':') + 1));
  const auto parsed = std::from_chars(snapshot.data(), snapshot.data() + snapshot.size(), end);
  const std::string_view running(parsed.ptr, snapshot.data() + snapshot.size());
  return {end, running.size() > 1 ? -1 - std::count(running.begin(), running.end(), ',') : 0};
}

}  // namespace

void KeptReplies::AddConnection() {
  const std::lock_guard lock(mutex_);
  ++connections_;
  Clear();
}

std::uint64_t KeptReplies::Connections() const {
  const std::lock_guard lock(mutex_);
  return connections_;
}

std::uint64_t KeptReplies::StateOf(const SeenSnapshot& snapshot) {
  const std::lock_guard lock(mutex_);
  if (!snapshot.Source || snapshot.Connections != connections_) return 0;
  const bool isSameSource = source_ && (source_ == snapshot.Source || *source_ == *snapshot.Source);
  if (isSameSource) {
    if (snapshot_ == snapshot.Text) return state_;
    if (ProgressOf(snapshot.Text) <= ProgressOf(snapshot_)) return 0;
  }
  Clear();
  source_ = snapshot.Source;
  snapshot_ = snapshot.Text;
  return ++state_;
}

KeptReplyPtr KeptReplies::Find(std::string_view key) {
  const std::lock_guard lock(mutex_);
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return found->second->Reply;
}

void KeptReplies::Keep(std::string_view key, KeptReplyPtr reply) {
  Entries added;
  added.push_back({std::string(key), std::move(reply)});
  const std::size_t bytes = BytesOf(added.front());
  if (bytes > mostBytes_ / 64) return;
  const std::lock_guard lock(mutex_);
  if (!source_ || added.front().Reply->State != state_ || byKey_.contains(key)) return;
  while (bytes_ + bytes > mostBytes_) RemoveLast();
  entries_.splice(entries_.begin(), added);
  byKey_.emplace(entries_.front().Key, entries_.begin());
  bytes_ += bytes;
}

void KeptReplies::Forget() {
  const std::lock_guard lock(mutex_);
  Clear();
}

std::size_t KeptReplies::Bytes() const {
  const std::lock_guard lock(mutex_);
  return bytes_;
}

std::size_t KeptReplies::BytesOf(const Entry& entry) {
  return kOverhead + sizeof(Entry) + sizeof(KeptReply) + sizeof(Reply) + entry.Key.capacity() +
         kStatementOverhead + entry.Reply->Translation->Sql.capacity() +
         PQresultMemorySize(entry.Reply->Rows->Result.get());
}

void KeptReplies::Clear() {
  source_ = nullptr;
  byKey_.clear();
  entries_.clear();
  bytes_ = 0;
}

void KeptReplies::RemoveLast() {
  bytes_ -= BytesOf(entries_.back());
  byKey_.erase(entries_.back().Key);
  entries_.pop_back();
}

}  // namespace orlune::postgresql
