#include "frame/form_parts.h"

#include <algorithm>

#include "component/component_state.h"
#include "frame/date_text.h"
#include "frame/lists.h"

namespace orlune {

Markup SelectedWhen(bool isSelected) {
  return isSelected ? Markup(" SELECTED") : Markup("");
}

Markup CheckedIf(std::string_view a, std::string_view b) {
  return a == b ? Markup(" CHECKED") : Markup("");
}

Markup SelectedIf(std::string_view listText, std::string_view value) {
  return SelectedWhen(IsInList(listText, value));
}

Markup SelectedIf(std::span<const std::string> values, std::string_view value) {
  const auto searched = values.empty() ? values : values.subspan(1);
  return SelectedWhen(std::find(searched.begin(), searched.end(), value) != searched.end());
}

Html TimeSelect(const ComponentState& state, Markup name, std::optional<TimeOfDay> selected, int stepMinutes,
                bool withEmpty) {
  using std::chrono::minutes;
  Html list("<SELECT NAME=\"{}\">\r\n", name);
  if (withEmpty) list.Add("<OPTION>- - - -\r\n");
  for (minutes time{0}; time < minutes{24 * 60}; time += minutes{stepMinutes}) {
    const bool isSelected = selected && std::chrono::floor<minutes>(*selected) == time;
    list.Add("<OPTION{}>{}\r\n", SelectedWhen(isSelected), Content(FormatTime(state.TimeFormat, time)));
  }
  list.Add("</SELECT>\r\n");
  return list;
}

Html TextInput(const ComponentState& state, Markup name, std::string_view value) {
  return Html("<INPUT TYPE=text NAME=\"{}\" VALUE=\"{}\" SIZE={}>", name, Attribute(value),
              InputSize(state, 18, 38));
}

Html HiddenField(Markup name, std::string_view value) {
  return Html("<INPUT TYPE=hidden NAME=\"{}\" VALUE=\"{}\">", name, Attribute(value));
}

Html TextAreaContent(std::string_view text) {
  const bool beginsWithLineEnd = text.starts_with('\r') || text.starts_with('\n');
  return Html("{}{}", beginsWithLineEnd ? Markup("\r\n") : Markup(""), Content(text));
}

Html ActionButton(const ComponentState& state, std::string_view label, const Html& query) {
  return Html(
      "<INPUT TYPE=button VALUE=\"{}\" "
      "onClick=\"javascript:document.acForm.action='{}?{}';document.acForm.submit();\">",
      Attribute(label), ScriptAttribute(state.ScriptName), query);
}

int InputSize(const ComponentState& state, int other, int compatible) {
  return state.IsCompatibleBrowser ? compatible : other;
}

Html FormTableOpen(const ComponentState& state) {
  return Html(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>",
      CellSpacing(state));
}

Markup CellSpacing(const ComponentState& state) {
  return state.IsCompatibleBrowser ? Markup("1") : Markup("0.5");
}

std::string_view EventTypeIcon(const ComponentState& state, std::string_view typeName) {
  const auto type = std::find_if(state.EventTypes.begin(), state.EventTypes.end(),
                                 [&](const EventTypeEntry& entry) { return entry.TypeName == typeName; });
  if (type == state.EventTypes.end() || type->FileName.empty()) return "cal_redind.gif";
  return type->FileName;
}

}  // namespace orlune
