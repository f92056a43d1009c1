#include "pages/admin/field_rows.h"

#include <string>

#include "base/name_set.h"
#include "html/form_parts.h"
#include "html/option_label.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

std::string IdText(const Value& value) {
  const auto number = NumberOf(value);
  return number ? std::to_string(*number) : std::string(TextOf(value));
}

}  // namespace

void AddRecordOptions(Html& list, ResultSet& rows, const std::function<bool(std::string_view)>& isSelected) {
  const int idColumn = rows.Column("ID");
  const int prettyName = rows.Column("PrettyName");
  const int intName = rows.Column("IntName");
  while (rows.Next()) {
    const std::string id = IdText(rows.Get(idColumn));
    list.Add("<OPTION VALUE=\"{}\"{}>{} ({})", Attribute(id), SelectedWhen(isSelected(id)),
             OptionLabel(TextOf(rows.Get(prettyName))), OptionLabel(TextOf(rows.Get(intName))));
  }
}

Html FieldRow(const Visit& visit, Text label, const Html& field) {
  return Html("<TR><TD>{}</TD><TD>{}</TD></TR>", Content(LoadText(visit, label)), field);
}

Html TallRow(const Html& label, const Html& field) {
  return Html("<TR><TD VALIGN=TOP>{}</TD><TD VALIGN=TOP>{}</TD></TR>", label, field);
}

Html ChoiceRow(const Visit& visit, Text label, Markup name, SqlLiteral records, const NameSet& selected) {
  Html list("<SELECT NAME=\"{}\" SIZE=5 MULTIPLE>", name);
  AddRecordOptions(list, *OpenQuery(visit.Database, Statement("{}", records)),
                   [&](std::string_view calendar) { return selected.Contains(calendar); });
  list.Add("</SELECT>");
  return TallRow(
      Html("{}<BR>{}", Content(LoadText(visit, label)), Content(LoadText(visit, Text::kSelectionHint))),
      list);
}

Html FixedChoiceRow(const Visit& visit, Text label, Markup name, std::string_view choice) {
  return TallRow(Html("{}", Content(LoadText(visit, label))),
                 Html("{}{}", Content(choice), HiddenField(name, "")));
}

Html VisibilityRow(const Visit& visit, std::string_view hide) {
  return FieldRow(visit, Text::kCalendarVisibility,
                  Html("<INPUT TYPE=radio NAME=\"hide\" VALUE=\"no\"{}>{}"
                       "<INPUT TYPE=radio NAME=\"hide\" VALUE=\"yes\"{}>{}",
                       CheckedIf(hide, "no"), Content(LoadText(visit, Text::kVisible)),
                       CheckedIf(hide, "yes"), Content(LoadText(visit, Text::kHidden))));
}

}  // namespace orlune
