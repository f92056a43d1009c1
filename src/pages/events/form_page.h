#pragma once

#include <string_view>

#include "html/html.h"
#include "texts/text.h"

namespace orlune {

struct PageContext;

/// What the pages with a form for events share: a frame, rows of a label and its field, and a row of buttons.

/// Opens the page up to its first row. `action` is the query that the form is sent to.
Html FormPageOpen(const PageContext& context, const Html& action, Text caption, const Html& toolbar);
/// Closes the rows, with `buttons` below them.
Html CloseFormRows(Html page, const Html& buttons);

/// A row whose label, the text `label`, belongs to the field named `field`, which carries that ID.
Html FieldRow(const PageContext& context, Text label, Markup field, const Html& control);
/// A row whose label belongs to several fields.
Html GroupRow(const PageContext& context, Text label, const Html& controls);

/// A choice of a list; `label` is the number of its text.
Html Choice(const PageContext& context, std::string_view value, Text label, bool isSelected);

/// A date field with the button that opens the date picker in a window of its own; `number` is 1 or 2.
Html DateInput(const PageContext& context, int number, std::string_view value);

/// The buttons to the calendar, to a new event, and to the search.
Html EventToolbar(const PageContext& context);
/// The buttons of the search: to the calendar and, for whoever is logged in, to a new event.
Html SearchToolbar(const PageContext& context);
/// The button to the search.
Html SearchButton(const PageContext& context);

}  // namespace orlune
