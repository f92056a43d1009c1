#include "sessions/page_session.h"

#include "platform/database.h"
#include "sessions/session_identifier.h"

namespace orlune {
namespace {

constexpr std::string_view kLoginKey = "Login";
constexpr std::size_t kMostCandidates = 4;
constexpr std::size_t kLongestValue = 2'000;  // bytes

}  // namespace

PageSession::PageSession(SessionStore& store, std::string_view pagePath,
                         const std::vector<std::string_view>& candidates)
    : store_(store), pagePath_(pagePath) {
  try {
    Find(candidates);
  } catch (const DatabaseError&) {
    failure_ = std::current_exception();
  }
}

void PageSession::Find(const std::vector<std::string_view>& candidates) {
  std::vector<std::string_view> possible;
  for (const std::string_view candidate : candidates) {
    if (possible.size() < kMostCandidates && IsSessionIdentifier(candidate)) possible.push_back(candidate);
  }
  if (possible.empty()) return;
  found_ = store_.Find(pagePath_, possible);
  if (found_) values_ = found_->Values;
}

std::string PageSession::Get(std::string_view key) const {
  RequireValues();
  return std::string(values_.Find(key));
}

void PageSession::Set(std::string_view key, std::string_view value) {
  RequireValues();
  if (values_.Find(key) == value || value.size() > kLongestValue) return;
  NamedTexts change;
  change.Set(key, value);
  ApplyChanges(change, values_);
  changes_.Set(key, value);
  if (key == kLoginKey) needsNewIdentifier_ = true;
}

void PageSession::Save() {
  if (changes_.size() == 0) return;
  if (values_.size() > 0 && (!found_ || needsNewIdentifier_)) {
    newIdentifier_ = store_.Start(pagePath_, values_, found_ ? found_->Id : "");
  } else if (values_.size() > 0) {
    store_.Change(pagePath_, *found_, changes_);
  } else if (found_) {
    store_.End(pagePath_, found_->Id);
    newIdentifier_ = "";
  }
}

void PageSession::RequireValues() const {
  if (failure_) std::rethrow_exception(failure_);
}

}  // namespace orlune
