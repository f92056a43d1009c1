#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/page_properties.h"
#include "base/configuration_error.h"
#include "base/ip_network.h"
#include "drivers/engines/database_address.h"
#include "http/security_headers.h"

namespace orlune {

/// A property that a hosting page sets, with a value of the property's type.
struct PropertyValue {
  const PageProperty* Property;
  std::variant<std::string, bool> Value;
};

struct PageConfiguration {
  std::string Path;
  std::string Region;                     ///< how its dates are written; "" for the server's region
  std::string DBPath;                     ///< as it is configured; "" when it is not set
  bool SharesWithLogin = false;           ///< devices may also use the login's password
  std::vector<PropertyValue> Properties;  ///< the other ones, in the order of the file

  /// The switch `name` among the properties; false when it is not set.
  bool IsOn(std::string_view name) const;
  /// The text `name` among them, or "".
  std::string TextOf(std::string_view name) const;
};

/// The settings of the server; its paths are absolute once read.
struct Configuration {
  std::string Listen = "127.0.0.1:8080";
  std::filesystem::path Site = "site";
  bool Compresses = false;        ///< pages and files, for browsers that take it
  bool JoinsStyleSheets = false;  ///< with those that they import
  std::string Region = "en_US";
  std::string TimeZone;  ///< of the clock and of all events; "": the machine's
  long long SessionMinutes = 60;
  bool StoresSessions = false;        ///< in the databases of their pages, not in memory
  long long Threads = 0;              ///< 0: chosen from the processors
  long long DatabaseConnections = 0;  ///< maximum to a database server; 0: as many as the threads need
  std::filesystem::path SecretFile = "var/secret.key";
  std::vector<IpNetwork> TrustedProxies;                      ///< whose forwarding headers are believed
  long long DrainSeconds = 0;                                 ///< between the stop signal and the stop
  std::vector<std::string> AllowedHosts;                      ///< names to answer under; none: under any
  std::string ContentSecurityPolicy{kContentSecurityPolicy};  ///< "" for none
  long long Connections = 10'000;
  long long ConnectionsPerAddress = 6'000;
  long long ReservedConnections = 1'000;  ///< of `Connections`, for addresses that have none
  long long ReplyMegabytes = 256;         ///< of memory, for pages that are being sent
  std::filesystem::path Certificate;      ///< of HTTPS; none: HTTP
  std::filesystem::path Key;              ///< the certificate's
  std::string RedirectListen;             ///< HTTP that leads to HTTPS; "": none
  long long HstsSeconds = 0;              ///< for which browsers use HTTPS only; 0: they are not told
  std::filesystem::path DatabaseFolder;   ///< where a relative DBPath begins
  std::vector<PageConfiguration> Pages;
};

/// Throws ConfigurationError when the server cannot run with it: for an unusable address, a missing site
/// folder, a page without a database, or a secret or database file inside the site folder.
void CheckConfiguration(const Configuration& configuration);

/// The database of a page. Throws ConfigurationError when the page has none, or for a malformed address.
DatabaseAddress AddressOf(const Configuration& configuration, const PageConfiguration& page);

}  // namespace orlune
