#include "html/calendar_options.h"

#include "html/form_parts.h"
#include "html/option_label.h"
#include "store/field.h"

namespace orlune {

void AddCalendarOptions(Html& list, ResultSet& rows, const std::function<bool(std::string_view)>& isSelected,
                        Markup ending) {
  const int nameColumn = rows.Column("Name");
  const int friendlyName = rows.Column("FriendlyName");
  const int isGroup = rows.Column("IsGroup");
  while (rows.Next()) {
    const std::string_view name = TextOf(rows.Get(nameColumn));
    const Html label = OptionLabel(TextOf(rows.Get(friendlyName)));
    list.Add("<OPTION VALUE=\"{}\"{}>", Attribute(name), SelectedWhen(isSelected(name)));
    if (YesNoOf(rows.Get(isGroup))) {
      list.Add("[{}]{}", label, ending);
    } else {
      list.Add("{}{}", label, ending);
    }
  }
}

}  // namespace orlune
