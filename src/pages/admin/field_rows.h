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

/// Appends an OPTION for each record.
void AddRecordOptions(Html& list, std::span<const RecordChoice> records,
                      const std::function<bool(std::string_view id)>& isSelected);

/// A row with a tall field, whose label is aligned at the top.
Html TallRow(const Html& label, const Html& field);
/// A row with a list for selecting several of `choices`.
Html ChoiceRow(const PageContext& context, Text label, Markup name, std::span<const RecordChoice> choices,
               const NameSet& selected);
/// A row for a choice that cannot be changed: it shows `choice`, and posts an empty value.
Html FixedChoiceRow(const PageContext& context, Text label, Markup name, std::string_view choice);
/// The row for hiding a calendar; `hide` is "yes" or "no".
Html VisibilityRow(const PageContext& context, std::string_view hide);

}  // namespace orlune
