#include "request/texts.h"

#include "base/text.h"
#include "request/component_state.h"
#include "texts/string_table.h"

namespace orlune {

std::string_view LoadText(const ComponentState& state, int id) {
  if (state.Localiser) {
    if (const auto text = state.Localiser->Loadstring(id)) return *text;
  }
  return StringTableText(id);
}

std::string LoadText(const ComponentState& state, int id, std::initializer_list<std::string_view> arguments) {
  std::string text(LoadText(state, id));
  std::string placeholder = "%s";
  for (const std::string_view argument : arguments) {
    text = ReplaceAll(text, placeholder, argument);
    ++placeholder[1];
  }
  return text;
}

void AddAlert(ComponentState& state, int id, std::initializer_list<std::string_view> arguments) {
  state.AlertText += LoadText(state, id, arguments);
}

}  // namespace orlune
