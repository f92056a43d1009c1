#pragma once

#include <string_view>

#include "html/html.h"
#include "texts/text.h"

namespace orlune {

struct PageContext;

// Shared by the pages with a form for events: a frame, rows of a label and a field, and a row of buttons.

/// Opens the page up to its first row. `action` is the query to which the form is submitted.
Html FormPageOpen(const PageContext& context, const Html& action, Text caption, const Html& toolbar);
/// Closes the rows, with `buttons` below them.
Html CloseFormRows(Html page, const Html& buttons);

/// A row whose label is tied to one field; `control` must contain an element with the ID `field`.
Html FieldRow(const PageContext& context, Text label, Markup field, const Html& control);
/// A row with a label for several fields.
Html GroupRow(const PageContext& context, Text label, const Html& controls);

/// An OPTION.
Html Choice(const PageContext& context, std::string_view value, Text label, bool isSelected);

/// A date field with a button that opens the date picker; `number` is 1 or 2.
Html DateInput(const PageContext& context, int number, std::string_view value);
/// One that is shown only.
Html FixedDateInput(const PageContext& context, int number, std::string_view value);

/// The buttons for the calendar, a new event, and the search.
Html EventToolbar(const PageContext& context);
/// The buttons of the search: the calendar and, when the user is logged in, a new event.
Html SearchToolbar(const PageContext& context);
Html SearchButton(const PageContext& context);

}  // namespace orlune
