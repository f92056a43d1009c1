#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "html/html.h"
#include "model/record_choice.h"
#include "texts/text.h"

namespace orlune {

struct PageContext;
class NameSet;

/// Adds a choice for each record.
void AddRecordOptions(Html& list, std::span<const RecordChoice> records,
                      const std::function<bool(std::string_view id)>& isSelected);

/// A row whose field is tall, so that its label stands at the top.
Html TallRow(const Html& label, const Html& field);
/// A row for choosing several of `choices`.
Html ChoiceRow(const PageContext& context, Text label, Markup name, std::span<const RecordChoice> choices,
               const NameSet& selected);
/// A row in place of a choice that cannot be made: it tells `choice` and sends an empty one.
Html FixedChoiceRow(const PageContext& context, Text label, Markup name, std::string_view choice);
/// The row for choosing whether others see a calendar; `hide` is "yes" or "no".
Html VisibilityRow(const PageContext& context, std::string_view hide);

}  // namespace orlune
