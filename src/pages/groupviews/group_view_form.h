#pragma once

#include "pages/groupviews/group_view.h"

namespace orlune {

struct Visit;

/// What the form asks for: which calendars belong to a view, or their colours, which only a stored view with
/// members has.
enum class FormStep { kMembers, kColours };

/// The page on which the user edits `view`. Throws DatabaseError.
void ShowGroupViewForm(Visit& visit, const GroupView& view, FormStep step);

}  // namespace orlune
