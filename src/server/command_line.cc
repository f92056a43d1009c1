#include "server/command_line.h"

#include <chrono>
#include <ctime>
#include <exception>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>

#include <CLI/CLI.hpp>

#include "component/version.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/postgresql/address.h"
#include "server/clocks.h"
#include "server/configuration.h"
#include "server/init.h"
#include "server/serve.h"

namespace orlune {
namespace {

constexpr int kFailure = 1;
constexpr int kUsageError = 2;

// "2004-03-15T10:30:00", nothing for anything else.
std::optional<DateTime> ParseMoment(const std::string& text) {
  std::tm parts{};
  std::istringstream stream(text);
  stream >> std::get_time(&parts, "%Y-%m-%dT%H:%M:%S");
  const std::chrono::year_month_day day{std::chrono::year(parts.tm_year + 1900),
                                        std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
                                        std::chrono::day(static_cast<unsigned>(parts.tm_mday))};
  if (stream.fail() || text.size() != 19 || !day.ok() || parts.tm_sec > 59) return std::nullopt;
  return DateTime{day, std::chrono::hours(parts.tm_hour) + std::chrono::minutes(parts.tm_min) +
                           std::chrono::seconds(parts.tm_sec)};
}

void AddServe(CLI::App& program, ServeOptions& options) {
  CLI::App* serve = program.add_subcommand("serve", "Serve the hosting pages of a configuration file");
  serve->footer(DescribeSettings());
  serve->add_option("--config", options.ConfigurationFile, "The configuration file")->required();
  serve->add_option("--listen", options.Listen, "ADDR:PORT to listen at; port 0 takes a free one");
  serve->add_option("--database", options.Database,
                    "The database of every page: a file, or a postgresql:// address");
  serve->add_option_function<std::string>(
      "--now",
      [&options](const std::string& text) {
        options.Now = ParseMoment(text);
        if (!options.Now) throw CLI::ValidationError("--now", "expected a time such as 2004-03-15T10:30:00");
      },
      "Stop the clock at this time");
  serve->callback([&options] { Serve(options); });
}

void Init(const InitOptions& options) {
  const std::string password = InitDatabase(options, LoadRegionalSettings("en_US"));
  std::cout << "made " << WithoutPassword(options.Database) << "\n";
  if (!options.AdminPassword) std::cout << "log in as admin with the password " << password << "\n";
}

void AddInit(CLI::App& program, InitOptions& options) {
  CLI::App* init = program.add_subcommand("init", "Make a new database");
  init->add_option("database", options.Database,
                   "The database file, which must not exist yet, or a postgresql:// address")
      ->required();
  init->add_option("--admin-password", options.AdminPassword,
                   "The password of admin; made up when not given");
  init->add_flag("--demo", options.Demo, "Add a small company around today's date");
  init->callback([&options] { Init(options); });
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
  CLI::App program("A multi-user web calendar and group-scheduling server", "orlune");
  program.set_version_flag("--version", "orlune " + std::string(kVersion));
  program.require_subcommand(1);
  ServeOptions serveOptions;
  InitOptions initOptions{{}, std::nullopt, false, SystemClock().Now().Day};
  AddServe(program, serveOptions);
  AddInit(program, initOptions);
  try {
    program.parse(argc, argv);
    return 0;
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? 0 : kUsageError;
  } catch (const ConfigurationError& error) {
    std::cerr << "orlune: " << error.what() << "\n";
    return kUsageError;
  } catch (const std::exception& error) {
    std::cerr << "orlune: " << error.what() << "\n";
    return kFailure;
  }
}

}  // namespace orlune
