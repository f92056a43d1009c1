#include "html/calendar_options.h"

#include "html/form_parts.h"
#include "html/option_label.h"
#include "store/field.h"

namespace orlune {
namespace {

void AddOption(Html& list, std::string_view name, std::string_view friendlyName, bool isGroup,
               bool isSelected, Markup ending) {
  const Html label = OptionLabel(friendlyName);
  list.Add("<OPTION VALUE=\"{}\"{}>", Attribute(name), SelectedWhen(isSelected));
  if (isGroup) {
    list.Add("[{}]{}", label, ending);
  } else {
    list.Add("{}{}", label, ending);
  }
}

}  // namespace

void AddCalendarOptions(Html& list, ResultSet& rows, const std::function<bool(std::string_view)>& isSelected,
                        Markup ending) {
  const int nameColumn = rows.Column("Name");
  const int friendlyName = rows.Column("FriendlyName");
  const int isGroup = rows.Column("IsGroup");
  while (rows.Next()) {
    const std::string_view name = TextOf(rows.Get(nameColumn));
    AddOption(list, name, TextOf(rows.Get(friendlyName)), YesNoOf(rows.Get(isGroup)), isSelected(name),
              ending);
  }
}

void AddCalendarOptions(Html& list, std::span<const Calendar> calendars,
                        const std::function<bool(std::string_view)>& isSelected, Markup ending) {
  for (const Calendar& calendar : calendars) {
    AddOption(list, calendar.Name, calendar.FriendlyName, calendar.IsGroup, isSelected(calendar.Name),
              ending);
  }
}

}  // namespace orlune
