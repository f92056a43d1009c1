#pragma once

#include "html/html.h"
#include "model/ol_event.h"

namespace orlune {

struct Visit;

/// Writes the occurrences of one page, with what all of them share worked out once. Refers to the page's
/// visit.
class EventEntryWriter {
 public:
  explicit EventEntryWriter(const Visit& visit);

  /// An entry of the month view: icon, time span and title on one line.
  void AddMonthEntry(Html& page, const OL_Event& event) const;
  /// The same for the week view, with a blank line behind it.
  void AddWeekEntry(Html& page, const OL_Event& event) const;
  /// An entry of the day view: time span, title and comments.
  void AddDayEntry(Html& page, const OL_Event& event) const;

 private:
  void AddIcon(Html& page, const OL_Event& event) const;
  /// Returns whether the user may change the event, so that a link was opened.
  bool AddEditLinkOpen(Html& page, const OL_Event& event) const;
  bool AddIconAndTitle(Html& page, const OL_Event& event) const;

  const Visit* visit_;
  Html editLinkAttributes_;
};

}  // namespace orlune
