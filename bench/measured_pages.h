#pragma once

#include <string>
#include <vector>

#include "visitor.h"

namespace orlune::bench {

struct MeasuredPage {
  std::string Name;
  PageRequest Request;
  /// Whether success is a redirect, as after storing something.
  bool IsStored = false;
};

MeasuredPage LoginPage();
MeasuredPage MonthPage();
MeasuredPage WeekPage();
MeasuredPage EventForm();
MeasuredPage MessageForm();
MeasuredPage MessageListPage();
MeasuredPage SearchEverywhere();
MeasuredPage SearchOneCalendar();
MeasuredPage SavedEvent();
/// Suggests an event to ten users.
MeasuredPage SentSuggestion();

/// Requests the page once. Throws std::runtime_error when `IsStored` does not match the response.
void Try(Visitor& visitor, const MeasuredPage& page);

}  // namespace orlune::bench
