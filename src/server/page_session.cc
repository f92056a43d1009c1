#include "server/page_session.h"

namespace orlune {
namespace {

constexpr std::string_view kLoginKey = "Login";

struct Change {
  bool IsReal;
  bool IsLast;
};

Change Replace(SessionValues& session, std::string_view key, std::string_view value) {
  const std::lock_guard lock(session.Mutex);
  if (session.Values.Find(key) == value) return {false, false};
  if (value.empty()) {
    session.Values.Remove(key);
  } else {
    session.Values.Set(key, value);
  }
  return {true, session.Values.size() == 0};
}

}  // namespace

PageSession::PageSession(SessionStore& store, std::string_view pagePath,
                         const std::vector<std::string_view>& candidates)
    : store_(store), pagePath_(pagePath) {
  for (const std::string_view candidate : candidates) {
    values_ = store_.Find(pagePath_, candidate);
    if (values_ == nullptr) continue;
    id_ = sentId_ = candidate;
    break;
  }
}

std::string PageSession::Get(std::string_view key) const {
  if (values_ == nullptr) return {};
  const std::lock_guard lock(values_->Mutex);
  return std::string(values_->Values.Find(key));
}

void PageSession::Set(std::string_view key, std::string_view value) {
  const bool isNew = values_ == nullptr;
  if (isNew && value.empty()) return;
  if (isNew) values_ = std::make_shared<SessionValues>();
  const Change change = Replace(*values_, key, value);
  if (change.IsLast) {
    End();
  } else if (isNew || (change.IsReal && key == kLoginKey)) {
    StartAnew();
  }
}

std::optional<std::string> PageSession::NewIdentifier() const {
  if (id_ == sentId_) return std::nullopt;
  return id_;
}

void PageSession::StartAnew() {
  if (!id_.empty()) store_.End(pagePath_, id_);
  id_ = store_.Start(pagePath_, values_);
}

void PageSession::End() {
  store_.End(pagePath_, id_);
  id_.clear();
  values_ = nullptr;
}

}  // namespace orlune
