#pragma once

#include <string>
#include <vector>

#include "drivers/access_sql/translation.h"
#include "drivers/postgresql/link.h"
#include "platform/database.h"
#include "platform/regional_settings.h"

namespace orlune::postgresql {

/// The values of one statement as the server takes them. Kept from statement to statement for its memory.
class ParameterTexts {
 public:
  /// Throws DatabaseError for a value that does not fit its column.
  void Evaluate(const std::vector<access_sql::Parameter>& parameters, const StatementText& statement,
                const RegionalSettings& regional);
  /// Valid until the next `Evaluate`.
  Parameters Values() const { return values_; }

 private:
  bool WriteText(const access_sql::Parameter& parameter, const access_sql::StoredValue& value,
                 std::string& text) const;

  std::vector<std::string> texts_;
  std::vector<const char*> values_;
  std::string scratch_;
};

}  // namespace orlune::postgresql
