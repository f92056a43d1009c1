#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "component/orlune.h"
#include "drivers/sqlite/sqlite_driver.h"
#include "query_recorder.h"
#include "server/clocks.h"
#include "support/fake_host.h"

namespace orlune::bench {

class NoLanguagePacks : public LocaliserFactory {
 public:
  std::shared_ptr<const Localiser> Create(std::string_view /*programmaticName*/) override { return nullptr; }
};

/// The month page of a logged-in user over a file from `MakeCalendarFile`, without a network. Used by one
/// thread.
class MonthPage {
 public:
  /// Logs in and renders the page once. Throws std::runtime_error unless it shows what it should.
  MonthPage(const std::filesystem::path& databaseFile, const RegionalSettings& regional);

  /// Renders the page; valid until the next one.
  const std::string& Render() { return Answer(driver_, {}, {}); }
  /// The queries that one page sends, in their order.
  std::vector<RecordedQuery> Queries();

 private:
  const std::string& Answer(DatabaseDriver& databases, testing::FakeHost::Fields query,
                            testing::FakeHost::Fields form);

  const std::string databaseFile_;
  const RegionalSettings& regional_;
  const FixedClock clock_;
  NoLanguagePacks languagePacks_;
  SqliteDriver driver_;
  testing::FakeHost host_;
};

}  // namespace orlune::bench
