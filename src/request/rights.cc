#include "request/rights.h"

#include <algorithm>

#include "base/text.h"
#include "request/component_state.h"

namespace orlune {

bool IsLoggedIn(const ComponentState& state) {
  return !state.LoginName.empty();
}

bool IsAdministrator(const ComponentState& state) {
  return state.LoginName == "admin";
}

bool MayChangeEventsOf(const ComponentState& state, std::string_view owner) {
  if (owner.empty()) return false;
  const auto& groups = state.AdminOfGroups;
  return std::find(groups.begin(), groups.end(), owner) != groups.end() ||
         EqualIgnoringCase(owner, state.LoginName);
}

bool IsViewingOwnCalendar(const ComponentState& state) {
  return IsLoggedIn(state) && EqualIgnoringCase(state.CalName, state.LoginName);
}

}  // namespace orlune
