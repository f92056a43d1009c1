#include "pages/admin/field_rows.h"

#include <string>

#include "base/name_set.h"
#include "html/form_parts.h"
#include "request/texts.h"

namespace orlune {
void AddRecordOptions(Html& list, std::span<const RecordChoice> records,
                      const std::function<bool(std::string_view)>& isSelected) {
  for (const RecordChoice& record : records) {
    list.Add("<OPTION VALUE=\"{}\"{}>{} ({})", Attribute(record.Id), SelectedWhen(isSelected(record.Id)),
             OptionLabel(record.Name), OptionLabel(record.IntName));
  }
}

Html TallRow(const Html& label, const Html& field) {
  return Html("<TR><TD VALIGN=TOP>{}</TD><TD VALIGN=TOP>{}</TD></TR>", label, field);
}

Html ChoiceRow(const PageContext& context, Text label, Markup name, std::span<const RecordChoice> choices,
               const NameSet& selected) {
  Html list("<SELECT NAME=\"{}\" SIZE=5 MULTIPLE>", name);
  AddRecordOptions(list, choices, [&](std::string_view calendar) { return selected.Contains(calendar); });
  list.Add("</SELECT>");
  return TallRow(
      Html("{}<BR>{}", Content(LoadText(context, label)), Content(LoadText(context, Text::kSelectionHint))),
      list);
}

Html FixedChoiceRow(const PageContext& context, Text label, Markup name, std::string_view choice) {
  return TallRow(Html("{}", Content(LoadText(context, label))),
                 Html("{}{}", Content(choice), HiddenField(name, "")));
}

Html VisibilityRow(const PageContext& context, std::string_view hide) {
  return FormRow(context, Text::kCalendarVisibility,
                 Html("<INPUT TYPE=radio NAME=\"hide\" VALUE=\"no\"{}>{}"
                      "<INPUT TYPE=radio NAME=\"hide\" VALUE=\"yes\"{}>{}",
                      CheckedIf(hide, "no"), Content(LoadText(context, Text::kVisible)),
                      CheckedIf(hide, "yes"), Content(LoadText(context, Text::kHidden))));
}

}  // namespace orlune
