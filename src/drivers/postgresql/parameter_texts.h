#pragma once

#include <string>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/dialect/translation.h"
#include "drivers/postgresql/link.h"
#include "platform/database.h"

namespace orlune::postgresql {

/// The values of one statement as the server takes them. Kept from statement to statement for its memory.
class ParameterTexts {
 public:
  /// Throws DatabaseError for a value that does not fit its column.
  void Evaluate(const std::vector<dialect::Parameter>& parameters, const StatementText& statement,
                const RegionalSettings& regional);
  /// Valid until the next `Evaluate`.
  Parameters Values() const { return values_; }

 private:
  bool WriteText(const dialect::Parameter& parameter, const dialect::StoredValue& value,
                 std::string& text) const;

  std::vector<std::string> texts_;
  std::vector<const char*> values_;
  std::string scratch_;
};

}  // namespace orlune::postgresql
