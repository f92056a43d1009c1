#include "html/form_parts.h"

#include <algorithm>

#include "base/date_text.h"
#include "base/lists.h"
#include "request/texts.h"

namespace orlune {

Markup SelectedWhen(bool isSelected) {
  return isSelected ? Markup(" SELECTED") : Markup("");
}

Markup CheckedWhen(bool isChecked) {
  return isChecked ? Markup(" CHECKED") : Markup("");
}

Markup CheckedIf(std::string_view a, std::string_view b) {
  return CheckedWhen(a == b);
}

Markup SelectedIf(std::string_view listText, std::string_view value) {
  return SelectedWhen(IsInList(listText, value));
}

Markup SelectedIf(std::span<const std::string> values, std::string_view value) {
  const auto searched = values.empty() ? values : values.subspan(1);
  return SelectedWhen(std::find(searched.begin(), searched.end(), value) != searched.end());
}

Html TimeSelect(const PageContext& context, Markup name, std::optional<TimeOfDay> selected, int stepMinutes,
                bool withEmpty) {
  using std::chrono::minutes;
  Html list("<SELECT NAME=\"{}\">\r\n", name);
  if (withEmpty) list.Add("<OPTION>- - - -\r\n");
  for (minutes time{0}; time < minutes{24 * 60}; time += minutes{stepMinutes}) {
    const bool isSelected = selected && std::chrono::floor<minutes>(*selected) == time;
    list.Add("<OPTION{}>{}\r\n", SelectedWhen(isSelected),
             Content(FormatTime(context.Visitor.TimeFormat, time)));
  }
  list.Add("</SELECT>\r\n");
  return list;
}

Html TextInput(const PageContext& context, Markup name, std::string_view value) {
  return Html("<INPUT TYPE=text NAME=\"{}\" VALUE=\"{}\" SIZE={}>", name, Attribute(value),
              InputSize(context, 18, 38));
}

Html HiddenField(Markup name, std::string_view value) {
  return Html("<INPUT TYPE=hidden NAME=\"{}\" VALUE=\"{}\">", name, Attribute(value));
}

Html TextAreaContent(std::string_view text) {
  const bool beginsWithLineEnd = text.starts_with('\r') || text.starts_with('\n');
  return Html("{}{}", beginsWithLineEnd ? Markup("\r\n") : Markup(""), Content(text));
}

Html ActionButton(const PageContext& context, std::string_view label, const Html& query) {
  return Html(
      "<INPUT TYPE=button VALUE=\"{}\" "
      "onClick=\"javascript:document.acForm.action='{}?{}';document.acForm.submit();\">",
      Attribute(label), ScriptAttribute(context.Hosting.ScriptName), query);
}

int InputSize(const PageContext& context, int other, int compatible) {
  return context.IsCompatibleBrowser ? compatible : other;
}

Html FormTableOpen(const PageContext& context) {
  return Html(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>",
      CellSpacing(context));
}

Html FormRow(const PageContext& context, Text label, const Html& field) {
  return Html("<TR><TD>{}</TD><TD>{}</TD></TR>", Content(LoadText(context, label)), field);
}

Markup CellSpacing(const PageContext& context) {
  return context.IsCompatibleBrowser ? Markup("1") : Markup("0.5");
}

std::string_view EventTypeIcon(const PageContext& context, std::string_view typeName) {
  const auto type = std::find_if(context.Visitor.EventTypes.begin(), context.Visitor.EventTypes.end(),
                                 [&](const EventTypeEntry& entry) { return entry.TypeName == typeName; });
  if (type == context.Visitor.EventTypes.end() || type->FileName.empty()) return "cal_redind.gif";
  return type->FileName;
}

}  // namespace orlune
