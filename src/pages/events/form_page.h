#pragma once

#include <string_view>

#include "html/html.h"

namespace orlune {

struct ComponentState;

/// What the pages with a form for events share: a frame, rows of a label and its field, and a row of buttons.

/// Opens the page up to its first row. `action` is the query that the form is sent to.
Html FormPageOpen(const ComponentState& state, const Html& action, int caption, const Html& toolbar);
/// Closes the rows, with `buttons` below them, and writes the page.
void FinishFormRows(ComponentState& state, Html page, const Html& buttons);

/// A row whose label, the text `label`, belongs to the field named `field`, which carries that ID.
Html FieldRow(const ComponentState& state, int label, Markup field, const Html& control);
/// A row whose label belongs to several fields.
Html GroupRow(const ComponentState& state, int label, const Html& controls);

/// A choice of a list; `label` is the number of its text.
Html Choice(const ComponentState& state, Markup value, int label, bool isSelected);

/// A date field with the button that opens the date picker in a window of its own; `number` is 1 or 2.
Html DateInput(const ComponentState& state, int number, std::string_view value);

/// The buttons to the calendar, to a new event, and to the search.
Html EventToolbar(const ComponentState& state);
/// The buttons of the search: to the calendar and, for whoever is logged in, to a new event.
Html SearchToolbar(const ComponentState& state);
/// The button to the search.
Html SearchButton(const ComponentState& state);

}  // namespace orlune
