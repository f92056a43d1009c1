#include "server/serve.h"

#include <csignal>
#include <iostream>
#include <memory>
#include <thread>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>
#include <sys/resource.h>

#include "drivers/icu/icu_regional_settings.h"
#include "drivers/langpack/langpack_factory.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "server/clocks.h"
#include "server/configuration.h"
#include "server/http_host.h"
#include "server/log_text.h"
#include "server/logging_database_driver.h"
#include "server/page_runner.h"
#include "server/relative_database_driver.h"
#include "server/website.h"

namespace orlune {
namespace {

constexpr std::size_t kMostSessions = 32'768;

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

RegionalSettings RegionOf(const Configuration& configuration) {
  try {
    return LoadRegionalSettings(configuration.Region);
  } catch (const std::invalid_argument& error) {
    throw ConfigurationError(std::string("region: ") + error.what());
  }
}

std::unique_ptr<Clock> MakeClock(const ServeOptions& options) {
  if (options.Now) return std::make_unique<FixedClock>(*options.Now);
  return std::make_unique<SystemClock>();
}

bool OpenAll(const Configuration& configuration, DatabaseDriver& driver) {
  try {
    for (const PageConfiguration& page : configuration.Pages) driver.Open(page.DBPath);
    return true;
  } catch (const DatabaseError&) {
    return false;
  }
}

// Writing waits for the disk, so there are more threads than processors.
unsigned ThreadCount(const Configuration& configuration) {
  if (configuration.Threads > 0) return static_cast<unsigned>(configuration.Threads);
  return std::max(4U, 2 * std::thread::hardware_concurrency());
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

 private:
  sigset_t signals_{};
};

}  // namespace

void Serve(const ServeOptions& options) {
  const StopSignals stopSignals;
  RaiseFileLimit();
  const Configuration configuration = ReadConfiguration(options);
  const RegionalSettings regional = RegionOf(configuration);
  const auto log =
      std::make_shared<spdlog::logger>("orlune", std::make_shared<spdlog::sinks::stderr_sink_mt>());
  const std::unique_ptr<Clock> clock = MakeClock(options);
  SqliteDriver sqlite(regional);
  LoggingDatabaseDriver logging(sqlite, *log);
  RelativeDatabaseDriver databases(logging, configuration.DatabaseFolder);
  LangPackFactory localisers(configuration.Site / "lang",
                             [&log](const std::string& problem) { log->error("{}", OneLine(problem)); });
  const Surroundings surroundings{*clock, databases, regional, localisers};
  SessionStore sessions(std::chrono::minutes(configuration.SessionMinutes), kMostSessions);

  std::vector<HostedPage> pages;
  for (const PageConfiguration& page : configuration.Pages) pages.push_back(MakePage(page, surroundings));
  const std::string firstPath = pages.front().Path;
  Website website({std::move(pages), StaticFiles(configuration.Site), sessions,
                   CookieSealer(LoadSecretKey(configuration.SecretFile)), *clock,
                   [&configuration, &databases] { return OpenAll(configuration, databases); }, *log});

  if (!OpenAll(configuration, databases)) log->warn("serving without a database; \"orlune init\" makes one");
  ListeningSocket socket(configuration.Listen);
  const std::string address = "http://" + socket.Address() + firstPath;
  {
    const HttpHost host(std::move(socket), ThreadCount(configuration), HostLimits(),
                        [&website](const RequestMessage& request) { return website.Answer(request); });
    log->info("started at {}", address);
    std::cout << "listening on " << address << std::endl;  // NOLINT(performance-avoid-endl): it is waited for
    stopSignals.Wait();
    log->info("stopping");
  }
  log->info("stopped");
}

}  // namespace orlune
