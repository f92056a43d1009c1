#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "base/regional_settings.h"
#include "drivers/dialect/ast.h"
#include "platform/database.h"

namespace orlune::dialect {

/// A value as a database keeps it: yes and no as 1 and 0, days as YYYY-MM-DD, times of day as HH:MM:SS.
using StoredValue = std::variant<std::monostate, std::int64_t, std::string_view>;

/// What `literal` stands for in a column, with the spliced-in values of `statement`. A text may lie in the
/// statement, in `scratch` or in the literal, and is valid until one of them changes. Throws DatabaseError
/// for what does not fit the column; the message does not show the value.
StoredValue Evaluate(const Literal& literal, const Column& column, const StatementText& statement,
                     const RegionalSettings& regional, std::string& scratch);

/// Reads what was stored in a column of this type; Null when unreadable.
Value ReadStoredText(ColumnType type, std::string_view text);

}  // namespace orlune::dialect
