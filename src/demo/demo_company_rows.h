#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune::demo {

/// One row of Events. Texts are as a person types them; what is empty is stored as Null.
struct EventRow {
  std::string EventName;
  std::string Owner;
  std::string Type = "none";
  Date BeginDate;
  std::optional<Date> EndDate;  ///< of repeating events
  std::string BeginTime;        ///< "hh:mm", or "" without a time
  std::string EndTime;
  std::string RepeatWeekday;
  std::string RepeatFrequency;
  std::string RepeatDay;
  std::string RepeatWeekends;
  bool IsPrivate = false;
  std::string Comments;
  std::string EventType;
  std::string SuggID;
  std::string SuggestState;
};

/// One row of Messages: the copy of one recipient.
struct MessageRow {
  std::string Sender;
  std::string Recipient;
  DateTime SentDate;
  std::string Subject;
  std::string Content;
  bool IsViewed = false;
  std::string Suggestion;
};

/// Stores rows as the pages store them. Lives no longer than the connection; throws DatabaseError.
class RowWriter {
 public:
  RowWriter(Connection& database, const RegionalSettings& regional)
      : database_(&database), regional_(&regional) {}

  void Write(const EventRow& event) const;
  void Write(const MessageRow& message) const;
  /// The EventID of the newest sender's copy of a suggestion.
  std::string NewestSuggestion() const;

  const RegionalSettings& Regional() const { return *regional_; }

 private:
  Connection* database_;
  const RegionalSettings* regional_;
};

}  // namespace orlune::demo
