#include "app/serve.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <spdlog/spdlog.h>
#include <unistd.h>

#include "app/clocks.h"
#include "app/configuration.h"
#include "app/configuration_reader.h"
#include "app/database_health.h"
#include "app/exchange_keeper.h"
#include "app/file_limit.h"
#include "app/memory.h"
#include "app/non_blocking_sink.h"
#include "app/page_branches.h"
#include "app/page_runner.h"
#include "app/regions.h"
#include "app/secret_key_file.h"
#include "app/session_stores.h"
#include "app/site_version_names.h"
#include "app/stop_signals.h"
#include "base/log_text.h"
#include "drivers/langpack/langpack_factory.h"
#include "drivers/passwords/argon2_passwords.h"
#include "drivers/passwords/sodium_secrets.h"
#include "http/health_check.h"
#include "http/http_host.h"
#include "http/https_redirect.h"
#include "http/request_guard.h"
#include "http/website.h"
#include "icalendar/icalendar_text.h"
#include "logins/login_limiter.h"

namespace orlune {
namespace {

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

/// Requests that may wait, for other writers, for the disk or for passwords, have threads of their own. On a
/// database server each of them takes a connection.
unsigned WaitingThreadCount(const Configuration& configuration) {
  const bool haveOnlyFiles = std::ranges::all_of(configuration.Pages, [&](const PageConfiguration& page) {
    return AddressOf(configuration, page).IsFile();
  });
  return haveOnlyFiles ? 64 : 16;
}

// Reading may wait as well, for the disk or a database server, so there are more threads than processors.
unsigned ThreadCount(const Configuration& configuration) {
  if (configuration.Threads > 0) return static_cast<unsigned>(configuration.Threads);
  return std::max(4U, 2 * std::thread::hardware_concurrency());
}

std::unique_ptr<Clock> MakeClock(const ServeOptions& options) {
  if (options.Now) return std::make_unique<FixedClock>(*options.Now);
  return std::make_unique<SystemClock>();
}

HostLimits LimitsOf(const Configuration& configuration, std::size_t descriptors, spdlog::logger& log) {
  HostLimits limits;
  limits.Connections = {static_cast<std::size_t>(configuration.Connections),
                        static_cast<std::size_t>(configuration.ConnectionsPerAddress),
                        static_cast<std::size_t>(configuration.ReservedConnections)};
  limits.Times.ReplyBytes = static_cast<std::size_t>(configuration.ReplyMegabytes) << 20U;
  const std::size_t wanted = limits.MostSockets();
  const std::size_t available = DescriptorsForConnections(descriptors);
  if (wanted <= available) return limits;
  limits.Connections.Total = std::max<std::size_t>(limits.Connections.Total * available / wanted, 1);
  log.warn("the limit of {} file descriptors (ulimit -n) leaves {} of {} connections", descriptors,
           limits.Connections.Total, configuration.Connections);
  return limits;
}

std::shared_ptr<TlsCertificate> LoadCertificate(const Configuration& configuration) {
  if (configuration.Certificate.empty()) return nullptr;
  return std::make_shared<TlsCertificate>(CertificateFiles{configuration.Certificate, configuration.Key});
}

void Reload(TlsCertificate* certificate, spdlog::logger& log) {
  if (certificate == nullptr) return log.info("SIGHUP: there is no certificate to read again");
  try {
    certificate->Reload();
    log.info("reloaded the certificate");
  } catch (const ConfigurationError& error) {
    log.error("keeping the old certificate: {}", OneLine(error.what()));
  }
}

/// The C library takes the zone of the clock from the environment.
void SetClockTo(const std::string& timeZone) {
  if (timeZone.empty()) return;
  setenv("TZ", timeZone.c_str(), 1);
  tzset();
}

bool IsSharing(const PageConfiguration& page) {
  return page.IsOn("Sharing");
}

std::string TimeZoneOf(const Configuration& configuration) {
  return configuration.TimeZone.empty() ? IcalendarText::MachineZone() : configuration.TimeZone;
}

/// Leads from HTTP to HTTPS at the port of `address`; nothing when it is not configured.
std::unique_ptr<HttpHost> StartRedirect(const Configuration& configuration, const HostLimits& limits,
                                        const std::string& address, spdlog::logger& log) {
  if (configuration.RedirectListen.empty()) return nullptr;
  std::string port = address.substr(address.rfind(':') + 1);
  HostLimits fewer = limits;
  fewer.Connections.Total = std::max<std::size_t>(limits.Connections.Total / 10, 1);
  fewer.Connections.Reserved = fewer.Connections.Total / 10;
  ListeningSocket socket(configuration.RedirectListen);
  log.info("redirecting from http://{}", socket.Address());
  return std::make_unique<HttpHost>(HostParts{
      std::move(socket), 1, fewer, TrustedProxies(configuration.TrustedProxies), log,
      [port = std::move(port), allowed = configuration.AllowedHosts](const RequestMessage& request) {
        return RedirectToHttps(request, port, allowed);
      }});
}

}  // namespace

void Serve(const ServeOptions& options) {
  ReturnLargeMemory();
  const std::size_t descriptors = RaiseFileLimit();
  Configuration configuration = ReadConfiguration(options);
  SetClockTo(configuration.TimeZone);
  StaticFiles files(configuration.Site, {configuration.Compresses, configuration.JoinsStyleSheets});
  NameSiteVersion(configuration.Pages, files);
  const StopSignals stopSignals;
  const std::shared_ptr<TlsCertificate> certificate = LoadCertificate(configuration);
  const unsigned threads = ThreadCount(configuration);
  const unsigned waitingThreads = WaitingThreadCount(configuration);
  const auto log =
      std::make_shared<spdlog::logger>("orlune", std::make_shared<NonBlockingSink>(STDERR_FILENO));
  const std::unique_ptr<Clock> clock = MakeClock(options);
  Regions regions(configuration, threads + waitingThreads + waitingThreads / 4, *log);
  LangPackFactory localisers(configuration.Site / "lang",
                             [&log](const std::string& problem) { log->error("{}", OneLine(problem)); });
  SessionStores sessions(configuration, regions, *log);
  Argon2Passwords passwords(std::max(std::thread::hardware_concurrency(), 1U));
  LoginLimiter logins(*log);
  SodiumSecrets secrets;
  RecentLogins recentLogins;
  std::optional<IcalendarText> texts;
  std::optional<ExchangeSurroundings> exchange;
  if (!configuration.TimeZone.empty() || std::ranges::any_of(configuration.Pages, IsSharing)) {
    texts.emplace(TimeZoneOf(configuration));  // throws for a zone that there is none of
    exchange.emplace(
        ExchangeSurroundings{*texts, secrets, passwords, logins, recentLogins, *clock, localisers});
  }

  std::vector<HostedPage> pages;
  std::vector<const PagePlace*> sharingPlaces;
  for (std::size_t i = 0; i < configuration.Pages.size(); ++i) {
    const PagePlace& place = regions.OfPage(i);
    const auto resources = [&](PageDatabase& database, Access access) {
      return PageResources{{*clock, database, place.Region.Settings(), place.Region, localisers, passwords,
                            logins, texts ? &*texts : nullptr, &secrets},
                           sessions.OfPage(i, access)};
    };
    pages.push_back(MakePage(configuration.Pages[i], place.Database.Address().Displayed(),
                             resources(place.Database, Access::kReadAndWrite),
                             resources(place.DatabaseToRead, Access::kRead)));
    if (!IsSharing(configuration.Pages[i])) continue;
    pages.back().Branches = MakeBranches(configuration.Pages[i], place, *exchange);
    sharingPlaces.push_back(&place);
  }
  std::optional<ExchangeKeeper> keeper;
  if (exchange) keeper.emplace(std::move(sharingPlaces), ExchangeKeeperParts{*texts, secrets, *clock, *log});
  HealthCheck health([&] { return AllDatabasesRespond(configuration, regions, *log); });
  std::atomic<bool> isStopping = false;
  Website website({std::move(pages), std::move(files), CookieSealer(LoadSecretKey(configuration.SecretFile)),
                   TrustedProxies(configuration.TrustedProxies), *clock,
                   [&isStopping, &health] { return !isStopping && health.IsHealthy(); }, *log,
                   configuration.AllowedHosts, configuration.Compresses});

  if (!health.IsHealthy())
    log->warn(
        "a database does not respond; serving without it and retrying with each request "
        "(\"orlune init\" creates a missing one)");
  ListeningSocket socket(configuration.Listen);
  const HostLimits limits = LimitsOf(configuration, descriptors, *log);
  const std::unique_ptr<HttpHost> redirect = StartRedirect(configuration, limits, socket.Address(), *log);
  const std::string address =
      (certificate == nullptr ? "http://" : "https://") + socket.Address() + configuration.Pages.front().Path;
  {
    HttpHost host(
        {.Socket = std::move(socket),
         .Threads = threads,
         .Limits = limits,
         .Proxies = TrustedProxies(configuration.TrustedProxies),
         .Log = *log,
         .Answer = [&website](const RequestMessage& request) { return website.Answer(request); },
         .AnswerAtOnce = [&website](const RequestMessage& request) { return website.AnswerAtOnce(request); },
         .BodyRulesAt = [&website](std::string_view path) { return website.BodyRulesOf(path); },
         .IsLogin = &IsLogin,
         .WaitingThreads = waitingThreads,
         .Certificate = certificate,
         .HstsLifetime = std::chrono::seconds(configuration.HstsSeconds),
         .CommonHeaders = SecurityHeaders(configuration.ContentSecurityPolicy)});
    log->info("started at {}", address);
    std::cout << "listening on " << address << std::endl;  // NOLINT(performance-avoid-endl): it is waited for
    stopSignals.Wait([&] { Reload(certificate.get(), *log); });
    isStopping = true;
    log->info("stopping");
    host.CloseConnectionsAfterReply();
    stopSignals.WaitFor(std::chrono::seconds(configuration.DrainSeconds));
  }
  log->info("stopped");
}

}  // namespace orlune
