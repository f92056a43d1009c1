#include "app/serve.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>
#include <sys/resource.h>

#include "app/clocks.h"
#include "app/configuration.h"
#include "app/page_database.h"
#include "app/page_runner.h"
#include "base/log_text.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/langpack/langpack_factory.h"
#include "http/health_check.h"
#include "http/http_host.h"
#include "http/website.h"
#include "sessions/database_session_store.h"
#include "sessions/memory_session_store.h"
#include "sessions/session_cleaner.h"
#include "store/database_access.h"

namespace orlune {
namespace {

constexpr std::size_t kMostSessionsInMemory = 32'768;

Configuration ReadConfiguration(const ServeOptions& options) {
  Configuration configuration = LoadConfiguration(options.ConfigurationFile);
  if (options.Listen) configuration.Listen = *options.Listen;
  if (options.Database) {
    configuration.DatabaseFolder = std::filesystem::current_path();
    for (PageConfiguration& page : configuration.Pages) page.DBPath = *options.Database;
  }
  CheckConfiguration(configuration);
  return configuration;
}

RegionalSettings LoadRegion(const std::string& region) {
  try {
    return LoadRegionalSettings(region);
  } catch (const std::invalid_argument& error) {
    throw ConfigurationError(std::string("region: ") + error.what());
  }
}

// Writing waits for the disk, so there are more threads than processors.
unsigned ThreadCount(const Configuration& configuration) {
  if (configuration.Threads > 0) return static_cast<unsigned>(configuration.Threads);
  return std::max(4U, 2 * std::thread::hardware_concurrency());
}

// Every thread may need one, and so may what runs beside the requests.
std::size_t MostConnections(const Configuration& configuration) {
  if (configuration.DatabaseConnections > 0)
    return static_cast<std::size_t>(configuration.DatabaseConnections);
  return ThreadCount(configuration) + 2;
}

/// The databases as the pages of one region use them, whose statements hold dates in the region's form.
class Region {
 public:
  Region(const std::string& name, std::size_t mostConnections)
      : settings_(LoadRegion(name)), engines_(settings_, mostConnections) {}

  const RegionalSettings& Settings() const { return settings_; }
  /// The same one for each page with that address.
  PageDatabase& Database(const DatabaseAddress& address, spdlog::logger& log) {
    return databases_.try_emplace(address.Target(), engines_, address, log).first->second;
  }

 private:
  const RegionalSettings settings_;
  DatabaseEngines engines_;
  std::map<std::string, PageDatabase> databases_;
};

/// The regions of the pages, each made once, and the databases in them.
class Regions {
 public:
  struct PagePlace {
    const RegionalSettings& Regional;
    PageDatabase& Database;
  };

  Regions(const Configuration& configuration, spdlog::logger& log) {
    for (const PageConfiguration& page : configuration.Pages) {
      const std::string& name = page.Region.empty() ? configuration.Region : page.Region;
      Region& region = regions_.try_emplace(name, name, MostConnections(configuration)).first->second;
      ofPages_.push_back({region.Settings(), region.Database(AddressOf(configuration, page), log)});
    }
  }

  /// What the page at `index` of the configuration uses.
  const PagePlace& OfPage(std::size_t index) const { return ofPages_[index]; }

 private:
  std::map<std::string, Region> regions_;
  std::vector<PagePlace> ofPages_;
};

/// The running sessions, where the configuration wants them.
class Sessions {
 public:
  Sessions(const Configuration& configuration, const Regions& regions, spdlog::logger& log) {
    const auto lifetime = std::chrono::minutes(configuration.SessionMinutes);
    if (configuration.StoresSessions) {
      const SessionDatabases databases = DatabasesOf(configuration, regions);
      store_ = std::make_unique<DatabaseSessionStore>(databases, lifetime);
      cleaner_ = std::make_unique<SessionCleaner>(databases, log);
      cleaner_->Start();
    } else {
      store_ = std::make_unique<MemorySessionStore>(lifetime, kMostSessionsInMemory);
    }
  }

  SessionStore& Store() { return *store_; }

 private:
  static SessionDatabases DatabasesOf(const Configuration& configuration, const Regions& regions) {
    SessionDatabases databases;
    for (std::size_t i = 0; i < configuration.Pages.size(); ++i) {
      PageDatabase& database = regions.OfPage(i).Database;
      databases[configuration.Pages[i].Path] = {&database, database.Address().Displayed()};
    }
    return databases;
  }

  std::unique_ptr<SessionStore> store_;
  std::unique_ptr<SessionCleaner> cleaner_;
};

std::unique_ptr<Clock> MakeClock(const ServeOptions& options) {
  if (options.Now) return std::make_unique<FixedClock>(*options.Now);
  return std::make_unique<SystemClock>();
}

// A database may have gone away since it was opened, so it is asked for a row. Why it cannot be opened is in
// the log already.
bool Responds(PageDatabase& page, spdlog::logger& log) {
  bool isOpen = false;
  try {
    const std::unique_ptr<Connection> database = page.Open(page.Address().Displayed());
    isOpen = true;
    OpenQuery(*database, Statement("SELECT TOP 1 SheetID FROM StyleSheets"))->Next();
    return true;
  } catch (const std::exception& error) {
    if (isOpen) log.error("no answer from the database: {}", OneLine(error.what()));
    return false;
  }
}

bool AllDatabasesRespond(std::size_t pages, const Regions& regions, spdlog::logger& log) {
  std::set<PageDatabase*> databases;
  for (std::size_t i = 0; i < pages; ++i) databases.insert(&regions.OfPage(i).Database);
  return std::all_of(databases.begin(), databases.end(),
                     [&log](PageDatabase* database) { return Responds(*database, log); });
}

// Every connection may have a file open besides its socket.
void RaiseFileLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

/// The signals that end the server. Blocked from construction on, in all threads begun later, until waited
/// for.
class StopSignals {
 public:
  StopSignals() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGTERM);
    sigaddset(&signals_, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
  }
  void Wait() const {
    int received = 0;
    sigwait(&signals_, &received);
  }
  /// Waits no longer than `limit`.
  void WaitFor(std::chrono::seconds limit) const {
    const timespec time{limit.count(), 0};
    sigtimedwait(&signals_, nullptr, &time);
  }

 private:
  sigset_t signals_{};
};

}  // namespace

void Serve(const ServeOptions& options) {
  const StopSignals stopSignals;
  RaiseFileLimit();
  const Configuration configuration = ReadConfiguration(options);
  const auto log =
      std::make_shared<spdlog::logger>("orlune", std::make_shared<spdlog::sinks::stderr_sink_mt>());
  const std::unique_ptr<Clock> clock = MakeClock(options);
  Regions regions(configuration, *log);
  LangPackFactory localisers(configuration.Site / "lang",
                             [&log](const std::string& problem) { log->error("{}", OneLine(problem)); });
  Sessions sessions(configuration, regions, *log);

  std::vector<HostedPage> pages;
  for (std::size_t i = 0; i < configuration.Pages.size(); ++i) {
    const auto& [regional, database] = regions.OfPage(i);
    pages.push_back(MakePage(configuration.Pages[i], database.Address().Displayed(),
                             {*clock, database, regional, localisers}));
  }
  const std::string firstPath = pages.front().Path;
  HealthCheck health([&] { return AllDatabasesRespond(configuration.Pages.size(), regions, *log); });
  std::atomic<bool> isStopping = false;
  Website website({std::move(pages), StaticFiles(configuration.Site), sessions.Store(),
                   CookieSealer(LoadSecretKey(configuration.SecretFile)),
                   TrustedProxies(configuration.TrustedProxies), *clock,
                   [&isStopping, &health] { return !isStopping && health.IsHealthy(); }, *log});

  if (!health.IsHealthy())
    log->warn("serving without a database until it can be opened; \"orlune init\" makes a new one");
  ListeningSocket socket(configuration.Listen);
  const std::string address = "http://" + socket.Address() + firstPath;
  {
    HttpHost host(std::move(socket), ThreadCount(configuration), HostLimits(),
                  [&website](const RequestMessage& request) { return website.Answer(request); });
    log->info("started at {}", address);
    std::cout << "listening on " << address << std::endl;  // NOLINT(performance-avoid-endl): it is waited for
    stopSignals.Wait();
    isStopping = true;
    log->info("stopping");
    host.CloseConnectionsAfterReply();
    stopSignals.WaitFor(std::chrono::seconds(configuration.DrainSeconds));
  }
  log->info("stopped");
}

}  // namespace orlune
