#pragma once

#include <vector>

#include "html/html.h"
#include "model/calendar.h"
#include "model/group_view.h"
#include "platform/database.h"

namespace orlune {

struct PageContext;
struct Visitor;

/// Whether the form edits which calendars belong to a view, or their colours. The latter requires a stored
/// view with members.
enum class FormStep { kMembers, kColours };

/// The data of the form for group views.
struct GroupViewFormContent {
  GroupView View;
  FormStep Step = FormStep::kMembers;
  std::vector<GroupViewChoice> SavedViews;
  std::vector<Calendar> Calendars;  ///< the calendars to choose from; for `kColours` the members
};
/// Throws DatabaseError.
GroupViewFormContent LoadGroupViewForm(Connection& database, const Visitor& visitor, GroupView view,
                                       FormStep step);
Html WriteGroupViewForm(const PageContext& context, const GroupViewFormContent& content);

}  // namespace orlune
