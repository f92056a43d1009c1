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
/// The same for an array whose first element is never looked at.
Markup SelectedIf(std::span<const std::string> values, std::string_view value);

/// The choice list of the times of a day, `stepMinutes` apart, written by the user's clock; with `withEmpty`
/// it begins with "- - - -". The entry of the same minute as `selected` is selected.
Html TimeSelect(const PageContext& context, Markup name, std::optional<TimeOfDay> selected, int stepMinutes,
                bool withEmpty);

/// A text field that shows `value`.
Html TextInput(const PageContext& context, Markup name, std::string_view value);

/// A field that is sent along and not shown.
Html HiddenField(Markup name, std::string_view value);

/// A text as the content of a text area, whose first line end a browser would not take for part of it.
Html TextAreaContent(std::string_view text);

/// A button that sends the page's form to the query `query` of the script.
Html ActionButton(const PageContext& context, std::string_view label, const Html& query);

/// The width of a text field: `compatible` for browsers that call themselves so, else `other`.
int InputSize(const PageContext& context, int other, int compatible);
/// Opens a form's outer table and in its only cell the table of the form's rows.
Html FormTableOpen(const PageContext& context);
/// A row of a form's table: the text `label`, and what is entered beside it.
Html FormRow(const PageContext& context, Text label, const Html& field);
/// The space between the cells of a page's table.
Markup CellSpacing(const PageContext& context);

/// The file of an event type's icon, or "cal_redind.gif" when the type or its file is unknown.
std::string_view EventTypeIcon(const PageContext& context, std::string_view typeName);

}  // namespace orlune
