#include "sessions/page_session.h"

#include "platform/database.h"
#include "sessions/session_identifier.h"

namespace orlune {
namespace {

constexpr std::size_t kMaxCandidates = 4;
constexpr std::size_t kMaxValueSize = 2'000;  // bytes

}  // namespace

PageSession::PageSession(SessionStore& store, const std::vector<std::string_view>& candidates)
    : store_(store) {
  try {
    Find(candidates);
  } catch (const DatabaseError&) {
    failure_ = std::current_exception();
  }
}

void PageSession::Find(const std::vector<std::string_view>& candidates) {
  std::vector<std::string_view> possible;
  for (const std::string_view candidate : candidates) {
    if (possible.size() < kMaxCandidates && IsSessionIdentifier(candidate)) possible.push_back(candidate);
  }
  if (possible.empty()) return;
  found_ = store_.Find(possible);
  if (found_) values_ = found_->Values;
}

std::string PageSession::Get(std::string_view key) const {
  RequireValues();
  return std::string(values_.Find(key));
}

void PageSession::Set(std::string_view key, std::string_view value) {
  RequireValues();
  if (values_.Find(key) == value || value.size() > kMaxValueSize) return;
  NamedTexts change;
  change.Set(key, value);
  ApplyChanges(change, values_);
  changes_.Set(key, value);
  if (key == kLoginKey) hasLoginChanged_ = true;
}

void PageSession::Save() {
  if (changes_.size() == 0) return;
  if (values_.size() > 0 && (!found_ || hasLoginChanged_)) {
    newIdentifier_ = store_.Start(values_, found_ ? found_->Id : "");
  } else if (values_.size() > 0) {
    store_.Change(*found_, changes_);
  } else if (found_) {
    store_.End(found_->Id);
    newIdentifier_ = "";
  }
}

void PageSession::RequireValues() const {
  if (failure_) std::rethrow_exception(failure_);
}

}  // namespace orlune
