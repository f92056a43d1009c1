#include "frame/form_parts.h"

#include <algorithm>

#include "component/component_state.h"
#include "frame/date_text.h"
#include "frame/lists.h"

namespace orlune {

Markup CheckedIf(std::string_view a, std::string_view b) {
  return a == b ? Markup(" CHECKED") : Markup("");
}

Markup SelectedIf(std::string_view listText, std::string_view value) {
  return IsInList(listText, value) ? Markup(" SELECTED") : Markup("");
}

Markup SelectedIf(std::span<const std::string> values, std::string_view value) {
  const auto searched = values.empty() ? values : values.subspan(1);
  const bool found = std::find(searched.begin(), searched.end(), value) != searched.end();
  return found ? Markup(" SELECTED") : Markup("");
}

Html TimeSelect(const ComponentState& state, Markup name, std::optional<TimeOfDay> selected, int stepMinutes,
                bool withEmpty) {
  using std::chrono::minutes;
  Html list("<SELECT NAME=\"{}\">\r\n", name);
  if (withEmpty) list.Add("<OPTION>- - - -\r\n");
  for (minutes time{0}; time < minutes{24 * 60}; time += minutes{stepMinutes}) {
    const bool isSelected = selected && std::chrono::floor<minutes>(*selected) == time;
    list.Add("<OPTION{}>{}\r\n", isSelected ? Markup(" SELECTED") : Markup(""),
             Content(FormatTime(state.TimeFormat, time)));
  }
  list.Add("</SELECT>");
  return list;
}

int InputSize(const ComponentState& state, int other, int compatible) {
  return state.IsCompatibleBrowser ? compatible : other;
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
