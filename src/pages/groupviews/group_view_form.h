#pragma once

#include <vector>

#include "html/html.h"
#include "model/calendar.h"
#include "model/group_view.h"
#include "platform/database.h"

namespace orlune {

struct PageContext;
struct Visitor;

/// What the form asks for: which calendars belong to a view, or their colours, which only a stored view with
/// members has.
enum class FormStep { kMembers, kColours };

/// What the page shows on which the user edits a view.
struct GroupViewFormContent {
  GroupView View;
  FormStep Step = FormStep::kMembers;
  std::vector<GroupViewChoice> SavedViews;
  std::vector<Calendar> Calendars;  ///< those to choose from; in the step of the colours, the members
};
/// Throws DatabaseError.
GroupViewFormContent LoadGroupViewForm(Connection& database, const Visitor& visitor, GroupView view,
                                       FormStep step);
Html WriteGroupViewForm(const PageContext& context, const GroupViewFormContent& content);

}  // namespace orlune
