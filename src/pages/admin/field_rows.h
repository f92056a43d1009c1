#pragma once

#include <functional>
#include <string_view>

#include "html/html.h"
#include "platform/database.h"
#include "store/statement.h"
#include "texts/text.h"

namespace orlune {

struct Visit;
class NameSet;

/// Adds a choice for each row of `rows`, which selects ID, PrettyName and IntName. Throws DatabaseError.
void AddRecordOptions(Html& list, ResultSet& rows,
                      const std::function<bool(std::string_view id)>& isSelected);

/// A row of a form: the text numbered `label` and what is entered beside it.
Html FieldRow(const Visit& visit, Text label, const Html& field);
/// A row whose field is tall, so that its label stands at the top.
Html TallRow(const Html& label, const Html& field);
/// A row for choosing several of the calendars that `records` selects as ID, PrettyName and IntName.
Html ChoiceRow(const Visit& visit, Text label, Markup name, SqlLiteral records, const NameSet& selected);
/// A row in place of a choice that cannot be made: it tells `choice` and sends an empty one.
Html FixedChoiceRow(const Visit& visit, Text label, Markup name, std::string_view choice);
/// The row for choosing whether others see a calendar; `hide` is "yes" or "no".
Html VisibilityRow(const Visit& visit, std::string_view hide);

}  // namespace orlune
