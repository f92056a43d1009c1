#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/clocks.h"
#include "calendar_file.h"
#include "component/orlune.h"
#include "drivers/passwords/argon2_passwords.h"
#include "statement_recorder.h"
#include "support/english_only.h"
#include "support/fake_host.h"
#include "support/fake_login_guard.h"

namespace orlune::bench {

/// A decoded request.
struct PageRequest {
  testing::FakeHost::Fields Query;
  testing::FakeHost::Fields Form;
};

/// A logged-in user of a database with the rows of `MakeCalendarFile`, without a network. Not thread-safe.
class Visitor {
 public:
  /// Logs in. The driver and `regional` must outlive the visitor.
  Visitor(DatabaseDriver& databases, std::string database, const RegionalSettings& regional,
          std::string_view user = kUser);

  /// The response to one request; valid until the next one.
  const testing::Answer& Ask(const PageRequest& request) { return Answer(databases_, request); }
  /// The statements of one request, in order.
  std::vector<RecordedStatement> Statements(const PageRequest& request);

 private:
  const testing::Answer& Answer(DatabaseDriver& databases, PageRequest request);

  DatabaseDriver& databases_;
  const std::string database_;
  const RegionalSettings& regional_;
  const FixedClock clock_;
  testing::OneLanguage languages_{regional_};
  testing::NoLanguagePacks languagePacks_;
  Argon2Passwords passwords_;
  testing::FakeLoginGuard logins_;
  testing::FakeHost host_;
};

/// How often `sought` occurs in `text`.
int CountOf(std::string_view text, std::string_view sought);

}  // namespace orlune::bench
