#include "html/calendar_options.h"

#include "html/form_parts.h"
#include "html/option_label.h"

namespace orlune {

void AddCalendarOptions(Html& list, std::span<const Calendar> calendars,
                        const std::function<bool(std::string_view)>& isSelected, Markup ending) {
  for (const Calendar& calendar : calendars) {
    const Html label = OptionLabel(calendar.FriendlyName);
    list.Add("<OPTION VALUE=\"{}\"{}>", Attribute(calendar.Name), SelectedWhen(isSelected(calendar.Name)));
    if (calendar.IsGroup) {
      list.Add("[{}]{}", label, ending);
    } else {
      list.Add("{}{}", label, ending);
    }
  }
}

}  // namespace orlune
