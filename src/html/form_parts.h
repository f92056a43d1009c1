#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "html/html.h"
#include "request/page_context.h"
#include "texts/text.h"

namespace orlune {

/// " SELECTED" or nothing.
Markup SelectedWhen(bool isSelected);
/// " CHECKED" or nothing.
Markup CheckedWhen(bool isChecked);
/// " CHECKED" when `a` equals `b`, else nothing.
Markup CheckedIf(std::string_view a, std::string_view b);
/// " SELECTED" when `value` is an item of a text list, else nothing.
Markup SelectedIf(std::string_view listText, std::string_view value);
/// The same for an array, whose first element is ignored.
Markup SelectedIf(std::span<const std::string> values, std::string_view value);

/// A SELECT of the times of a day, `stepMinutes` apart, in the user's time format, and "- - - -" first when
/// `withEmpty`. The time of the same minute as `selected` is selected.
Html TimeSelect(const PageContext& context, Markup name, std::optional<TimeOfDay> selected, int stepMinutes,
                bool withEmpty);

Html TextInput(const PageContext& context, Markup name, std::string_view value);

Html HiddenField(Markup name, std::string_view value);

/// A text as the content of a TEXTAREA; repeats a leading line end, since HTML parsers drop the first one.
Html TextAreaContent(std::string_view text);

/// A button that submits the page's form to the script with the query `query`.
Html ActionButton(const PageContext& context, std::string_view label, const Html& query);

/// The SIZE of a text field: `compatible` when `IsCompatibleBrowser`, else `other`.
int InputSize(const PageContext& context, int other, int compatible);
/// Opens a form's outer table and, in its only cell, the table of its rows.
Html FormTableOpen(const PageContext& context);
/// A row of a form's table: the text `label`, and its field.
Html FormRow(const PageContext& context, Text label, const Html& field);
/// The value of CELLSPACING.
Markup CellSpacing(const PageContext& context);

/// The icon file of an event type; "cal_redind.gif" when the type or its file is unknown.
std::string_view EventTypeIcon(const PageContext& context, std::string_view typeName);

}  // namespace orlune
