#include "drivers/sqlite/statement_cache.h"

#include <utility>

#include <sqlite3.h>

namespace orlune::sqlite {

namespace {

constexpr std::size_t kMostStatements = 256;

}  // namespace

std::shared_ptr<CachedStatement> StatementCache::Find(std::string_view key) {
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return found->second->Statement;
}

void StatementCache::Add(std::string key, std::shared_ptr<CachedStatement> statement) {
  if (entries_.size() == kMostStatements) {
    byKey_.erase(entries_.back().Key);
    entries_.pop_back();
  }
  entries_.push_front({std::move(key), std::move(statement)});
  byKey_.emplace(entries_.front().Key, entries_.begin());
}

void StatementCache::Clear() {
  byKey_.clear();
  entries_.clear();
}

RunningStatement::~RunningStatement() {
  if (!handle_) return;
  sqlite3_reset(handle_.get());
  origin_->Idle.push_back(std::move(handle_));
}

}  // namespace orlune::sqlite
