#include "app/command_line.h"

#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <unistd.h>

#include "app/clocks.h"
#include "app/configuration_reader.h"
#include "app/serve.h"
#include "app/settings.h"
#include "base/version.h"
#include "commands/check.h"
#include "commands/copy.h"
#include "commands/hash_passwords.h"
#include "commands/init.h"
#include "drivers/engines/database_engines.h"
#include "drivers/icu/icu_regional_settings.h"
#include "drivers/passwords/argon2_passwords.h"

namespace orlune {
namespace {

constexpr int kFailure = 1;
constexpr int kUsageError = 2;

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

struct InitArguments {
  std::string Database;
  InitOptions Options;
};

void Init(const InitArguments& arguments) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  DatabaseEngines engines(regional);
  const NamedDatabase database = engines.Named(DatabaseAddress::Parse(arguments.Database));
  const std::string password = InitDatabase(database, arguments.Options, regional);
  std::cout << "made " << database.Address.Displayed() << "\n";
  if (!arguments.Options.AdminPassword) std::cout << "log in as admin with the password " << password << "\n";
}

void AddInit(CLI::App& program, InitArguments& arguments) {
  CLI::App* init = program.add_subcommand("init", "Make a new database");
  InitOptions& options = arguments.Options;
  init->add_option("database", arguments.Database,
                   "The database file, which must not exist yet, or a postgresql:// address")
      ->required();
  init->add_option("--admin-password", options.AdminPassword,
                   "The password of admin; made up when not given");
  init->add_flag("--demo", options.Demo, "Add a small company around today's date");
  init->callback([&arguments] { Init(arguments); });
}

/// What to copy and where to: files or URLs.
struct CopyOptions {
  std::string From;
  std::string To;
};

void Copy(const CopyOptions& options) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  DatabaseEngines engines(regional);
  CopyProgress progress(std::cerr, isatty(STDERR_FILENO) == 1);
  CopyDatabase(engines.Named(DatabaseAddress::Parse(options.From)),
               engines.Named(DatabaseAddress::Parse(options.To)), std::cout, progress);
}

void AddCopy(CLI::App& program, CopyOptions& options) {
  CLI::App* copy = program.add_subcommand("copy", "Copy a database into a new one, and compare the two");
  copy->footer(
      "Stop the servers of both first. An interrupted copy is resumed when the same command is given "
      "again.\nA database is a file, or a URL such as postgresql://user@host/name.");
  copy->add_option("from", options.From, "The database to copy; it is only read")->required();
  copy->add_option("to", options.To, "The new database; made when it is missing, else it must be empty")
      ->required();
  copy->callback([&options] { Copy(options); });
}

struct CheckOptions {
  std::string Database;
  std::filesystem::path ConfigurationFile;
};

/// Each database once; files by their full paths.
std::set<std::string> DatabasesToCheck(const CheckOptions& options) {
  if (!options.Database.empty()) return {options.Database};
  const Configuration configuration = LoadConfiguration(options.ConfigurationFile);
  std::set<std::string> targets;
  for (const PageConfiguration& page : configuration.Pages)
    targets.insert(AddressOf(configuration, page).Target());
  return targets;
}

bool Check(const CheckOptions& options) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  DatabaseEngines engines(regional);
  bool areSound = true;
  for (const std::string& database : DatabasesToCheck(options))
    areSound = CheckDatabase(engines.Named(DatabaseAddress::Parse(database)), std::cout) && areSound;
  return areSound;
}

void AddCheck(CLI::App& program, CheckOptions& options, int& exitCode) {
  CLI::App* check =
      program.add_subcommand("check", "Tell whether a database is complete and sound, and what to do");
  check->footer("Nothing is written. The exit code is 0 when all is sound, 1 when something was found.");
  auto* which = check->add_option_group("which")->require_option(1);
  which->add_option("database", options.Database, "The database: a file or a postgresql:// URL");
  which->add_option("--config", options.ConfigurationFile,
                    "A configuration file: the databases of all its pages");
  check->callback([&options, &exitCode] {
    if (!Check(options)) exitCode = kFailure;
  });
}

void HashAllPasswords(const std::string& address) {
  const RegionalSettings regional = LoadRegionalSettings("en_US");
  DatabaseEngines engines(regional);
  const NamedDatabase database = engines.Named(DatabaseAddress::Parse(address));
  Argon2Passwords passwords;
  const HashedPasswords counts = HashPasswords(*database.Engine.Connect(database.Address), passwords);
  std::cout << fmt::format("{} passwords hashed, {} were hashed before, {} accounts have none\n", counts.Now,
                           counts.Before, counts.Without);
}

void AddHashPasswords(CLI::App& program, std::string& database) {
  CLI::App* hash = program.add_subcommand(
      "hash-passwords", "Replace the passwords that are stored in plain by argon2id hashes");
  hash->footer("Servers may be running. Whoever is logged in has to log in again.");
  hash->add_option("database", database, "The database: a file or a postgresql:// URL")->required();
  hash->callback([&database] { HashAllPasswords(database); });
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
  CLI::App program("A multi-user web calendar and group-scheduling server", "orlune");
  program.set_version_flag("--version", "orlune " + std::string(kVersion));
  program.require_subcommand(1);
  ServeOptions serveOptions;
  InitArguments initArguments{{}, {std::nullopt, false, SystemClock().Now().Day}};
  CopyOptions copyOptions;
  CheckOptions checkOptions;
  std::string databaseToHash;
  int exitCode = 0;
  AddServe(program, serveOptions);
  AddInit(program, initArguments);
  AddCopy(program, copyOptions);
  AddCheck(program, checkOptions, exitCode);
  AddHashPasswords(program, databaseToHash);
  try {
    program.parse(argc, argv);
    return exitCode;
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
