#include "app/session_stores.h"

#include "sessions/database_session_store.h"
#include "sessions/memory_session_store.h"

namespace orlune {
namespace {

constexpr std::size_t kMaxSessionsInMemory = 32'768;  // of all pages

}  // namespace

SessionStores::SessionStores(const Configuration& configuration, Regions& regions, spdlog::logger& log) {
  const auto lifetime = std::chrono::minutes(configuration.SessionMinutes);
  std::vector<SessionDatabase> databases;
  for (std::size_t i = 0; i < configuration.Pages.size(); ++i) {
    const PageConfiguration& page = configuration.Pages[i];
    if (configuration.StoresSessions) {
      const PagePlace& place = regions.OfPage(i);
      const std::string address = place.Database.Address().Displayed();
      databases.push_back({&place.Database, address});
      SessionProlonger& prolonger = prolongers_.try_emplace(&place.Database, databases.back()).first->second;
      stores_.push_back(
          std::make_unique<DatabaseSessionStore>(databases.back(), prolonger, page.Path, lifetime));
      storesToRead_.push_back(std::make_unique<DatabaseSessionStore>(
          SessionDatabase{&place.DatabaseToRead, address}, prolonger, page.Path, lifetime));
    } else {
      stores_.push_back(
          std::make_unique<MemorySessionStore>(lifetime, kMaxSessionsInMemory / configuration.Pages.size()));
    }
  }
  if (databases.empty()) return;
  cleaner_ = std::make_unique<SessionCleaner>(std::move(databases), log);
  cleaner_->Start();
}

}  // namespace orlune
