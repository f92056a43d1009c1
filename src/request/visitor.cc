#include "request/visitor.h"

#include <algorithm>

#include "base/text.h"

namespace orlune {

bool Visitor::MayChangeEventsOf(std::string_view owner) const {
  if (owner.empty()) return false;
  return std::find(AdminOfGroups.begin(), AdminOfGroups.end(), owner) != AdminOfGroups.end() ||
         EqualIgnoringCase(owner, LoginName);
}

std::vector<std::string> Visitor::ChangeableCalendars() const {
  std::vector<std::string> calendars{LoginName};
  calendars.insert(calendars.end(), AdminOfGroups.begin(), AdminOfGroups.end());
  std::erase(calendars, "");
  return calendars;
}

bool Visitor::IsViewingOwnCalendar() const {
  return IsLoggedIn() && EqualIgnoringCase(CalName, LoginName);
}

bool Visitor::Sees(const OL_Event& event) const {
  return event.IsShown() && (!event.Private || IsViewingOwnCalendar());
}

}  // namespace orlune
