#pragma once

#include <string>
#include <vector>

#include "visitor.h"

namespace orlune::bench {

struct MeasuredPage {
  std::string Name;
  PageRequest Request;
  /// Whether the answer leads to another page, as it does when something was stored.
  bool IsStored = false;
};

MeasuredPage LoginPage();
MeasuredPage MonthPage();
MeasuredPage WeekPage();
MeasuredPage EventForm();
MeasuredPage MessageForm();
MeasuredPage MessageListPage();
/// Looks through all calendars, or only one.
MeasuredPage SearchEverywhere();
MeasuredPage SearchOneCalendar();
MeasuredPage SavedEvent();
/// An event that is suggested to ten users.
MeasuredPage SentSuggestion();

/// Asks once. Throws std::runtime_error when the answer is not of the page's kind.
void Try(Visitor& visitor, const MeasuredPage& page);

}  // namespace orlune::bench
