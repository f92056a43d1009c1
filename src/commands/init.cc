#include "commands/init.h"

#include <array>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <sodium.h>
#include <unistd.h>

#include "demo/demo_company.h"
#include "drivers/postgresql/address.h"
#include "drivers/postgresql/base_schema.h"
#include "drivers/postgresql/postgresql_driver.h"
#include "drivers/engines/private_files.h"
#include "drivers/sqlite/base_schema.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "store/database_access.h"
#include "store/schema_upgrade.h"

namespace orlune {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDemoPassword = "demo1";

struct NamedFile {
  std::string_view Name;
  std::string_view File;
};

constexpr std::array<NamedFile, 4> kColourSchemes{{
    {"Default", "default.css"},
    {"Dark", "dark.css"},
    {"High Contrast", "contrast.css"},
    {"Nineties", "nineties.css"},
}};

constexpr std::array<NamedFile, 10> kEventTypes{{
    {"Meeting", "type_meeting.gif"},
    {"Phone Call", "type_call.gif"},
    {"Deadline", "type_deadline.gif"},
    {"Travel", "type_travel.gif"},
    {"Training", "type_training.gif"},
    {"Holiday", "type_holiday.gif"},
    {"Birthday", "type_birthday.gif"},
    {"Party", "type_party.gif"},
    {"Sport", "type_sport.gif"},
    {"Doctor", "type_doctor.gif"},
}};

/// The file while it is being written: under a name of its own, and removed unless it was finished.
class UnfinishedDatabase {
 public:
  explicit UnfinishedDatabase(const fs::path& file)
      : file_(file), path_(file.string() + ".unfinished-" + std::to_string(::getpid())) {}
  UnfinishedDatabase(const UnfinishedDatabase&) = delete;
  UnfinishedDatabase& operator=(const UnfinishedDatabase&) = delete;
  ~UnfinishedDatabase() {
    std::error_code ignored;
    fs::remove(path_, ignored);
    fs::remove(Journal(), ignored);
    fs::remove(path_.string() + "-shm", ignored);
  }

  const fs::path& Path() const { return path_; }

  /// Gives the file its final name. Every connection to it has to be closed.
  void Finish() {
    if (fs::exists(Journal())) throw std::runtime_error("not everything was written");
    fs::rename(path_, file_);
  }

 private:
  fs::path Journal() const { return path_.string() + "-wal"; }

  fs::path file_;
  fs::path path_;
};

std::string MakePassword() {
  // Without letters and digits that look alike.
  constexpr std::string_view kLetters = "abcdefghjkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789";
  constexpr int kLength = 14;
  if (sodium_init() < 0) throw std::runtime_error("There is no source of randomness for a password.");
  std::string password;
  for (int i = 0; i < kLength; ++i) {
    password += kLetters[randombytes_uniform(static_cast<std::uint32_t>(kLetters.size()))];
  }
  return password;
}

std::string PasswordOf(const InitOptions& options) {
  if (!options.AdminPassword) return options.Demo ? std::string(kDemoPassword) : MakePassword();
  if (options.AdminPassword->empty() || options.AdminPassword->find(' ') != std::string::npos) {
    throw std::runtime_error("The administrator's password must not be empty or hold blanks.");
  }
  return *options.AdminPassword;
}

void Insert(Connection& database, SqlLiteral table, std::initializer_list<ColumnValue> values) {
  database.Execute(BuildSql(SqlMode::kInsert, table, values));
}

void AddBaseRows(Connection& database, const std::string& password) {
  Insert(database, "Calendars",
         {{"Name", SqlValue("admin")},
          {"FriendlyName", SqlValue("Administrator")},
          {"Password", SqlValue(password)},
          {"IsGroup", SqlValue("*no")}});
  Insert(database, "Calendars",
         {{"Name", SqlValue("default")},
          {"FriendlyName", SqlValue("Everybody")},
          {"IsGroup", SqlValue("*yes")}});
  for (const NamedFile& scheme : kColourSchemes) {
    Insert(database, "StyleSheets",
           {{"SheetName", SqlValue(scheme.Name)}, {"SheetFile", SqlValue(scheme.File)}});
  }
}

void AddEventTypes(Connection& database) {
  for (const NamedFile& type : kEventTypes) {
    Insert(database, "EventTypes", {{"TypeName", SqlValue(type.Name)}, {"FileName", SqlValue(type.File)}});
  }
}

void Fill(DatabaseDriver& driver, const InitOptions& options, const std::string& path,
          const std::string& password, const RegionalSettings& regional) {
  const std::unique_ptr<Connection> database = driver.Open(path);
  database->Begin();
  AddBaseRows(*database, password);
  database->Commit();
  UpgradeSchema(*database);
  database->Begin();
  AddEventTypes(*database);
  if (options.Demo) AddDemoCompany(*database, regional, options.Today, kDemoPassword);
  database->Commit();
}

void RequireFree(const fs::path& file) {
  if (fs::exists(file))
    throw std::runtime_error("The file " + file.string() + " exists already; it was left as it is.");
  const fs::path folder = fs::absolute(file).parent_path();
  if (!fs::is_directory(folder))
    throw std::runtime_error("The folder " + folder.string() + " does not exist.");
}

void MakeFile(const InitOptions& options, const std::string& password, const RegionalSettings& regional) {
  const PrivateFiles privateFiles;
  UnfinishedDatabase unfinished(options.Database);
  CreateBaseDatabase(unfinished.Path());
  {
    SqliteDriver driver(regional);
    Fill(driver, options, unfinished.Path().string(), password, regional);
  }
  unfinished.Finish();
}

void FillServer(const InitOptions& options, const std::string& password, const RegionalSettings& regional) {
  CreateBaseTables(options.Database);
  try {
    PostgresqlDriver driver(regional);
    Fill(driver, options, options.Database, password, regional);
  } catch (const std::exception&) {
    DropTables(options.Database);
    throw;
  }
}

}  // namespace

std::string InitDatabase(const InitOptions& options, const RegionalSettings& regional) {
  if (LooksLikeAnAddress(options.Database)) throw std::runtime_error(std::string(kHowToWriteAddresses));
  const bool isOnServer = IsPostgresqlAddress(options.Database);
  if (!isOnServer) RequireFree(options.Database);
  std::string password = PasswordOf(options);
  try {
    if (isOnServer) {
      FillServer(options, password, regional);
    } else {
      MakeFile(options, password, regional);
    }
  } catch (const std::exception& error) {
    throw std::runtime_error("The database " + WithoutPassword(options.Database) +
                             " could not be made: " + error.what());
  }
  return password;
}

}  // namespace orlune
