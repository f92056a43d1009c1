#pragma once

#include <vector>

#include "html/html.h"
#include "model/group_view.h"
#include "model/ol_events.h"
#include "request/page_context.h"

namespace orlune {

/// Writes the occurrences of one page; computes what they share once. `context` must outlive it.
class EventEntryWriter {
 public:
  EventEntryWriter(const PageContext& context, const GroupViewMembers& group);

  /// An entry of the month view: icon, time span and title on one line.
  void AddMonthEntry(Html& page, const Occurrence& occurrence) const;
  /// The same for the week view, followed by an empty line.
  void AddWeekEntry(Html& page, const Occurrence& occurrence) const;
  /// An entry of the day view: time span, title and comments.
  void AddDayEntry(Html& page, const Occurrence& occurrence) const;

 private:
  void AddIcon(Html& page, const OL_Event& event) const;
  /// Returns whether a link was opened, which it is if the user may change the event.
  bool AddEditLinkOpen(Html& page, const OL_Event& event) const;
  bool AddIconAndTitle(Html& page, const Occurrence& occurrence) const;
  const Html& ColoursOf(const Occurrence& occurrence) const;

  const PageContext* context_;
  Html iconOpen_;              ///< up to the file
  Html editLinkOpen_;          ///< up to the number of the event
  Html editLinkAttributes_;    ///< behind the number
  std::vector<Html> colours_;  ///< the FONT tag of each member, then an empty one for other calendars
};

}  // namespace orlune
