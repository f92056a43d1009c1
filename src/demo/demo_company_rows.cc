#include "demo/demo_company_rows.h"

#include <vector>

#include "base/dates.h"
#include "base/text.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune::demo {
namespace {

std::string WithoutApostrophes(std::string_view text) {
  return ReplaceAll(text, "'", "&#39;");
}

std::string WithoutQuotes(std::string_view text) {
  return ReplaceAll(WithoutApostrophes(text), "\"", "&quot;");
}

Statement YesNo(bool value) {
  return SqlValue(value ? "*yes" : "*no");
}

}  // namespace

void RowWriter::Write(const EventRow& event) const {
  std::vector<ColumnValue> values{
      {"SuggID", SqlValue(event.SuggID)},
      {"SuggestState", SqlValue(event.SuggestState)},
      {"EventName", SqlValue(WithoutQuotes(event.EventName))},
      {"Owner", SqlValue(event.Owner)},
      {"Type", SqlValue(event.Type)},
      {"Private", YesNo(event.IsPrivate)},
      {"BeginDate", SqlValue(FormatShortDate(*regional_, event.BeginDate))},
      {"BeginTime", SqlValue(event.BeginTime)},
      {"EndTime", SqlValue(event.EndTime)},
      {"Comments", SqlValue(WithoutQuotes(event.Comments))},
      {"EventType", SqlValue(event.EventType)},
  };
  if (event.EndDate) values.push_back({"EndDate", SqlValue(FormatShortDate(*regional_, *event.EndDate))});
  if (event.Type == "weekday") {
    values.push_back({"RepeatWeekday", SqlValue(event.RepeatWeekday)});
    values.push_back({"RepeatFrequency", SqlValue(event.RepeatFrequency)});
  } else if (event.Type == "month" || event.Type == "year") {
    values.push_back({"RepeatDay", SqlValue(event.RepeatDay)});
    values.push_back({"RepeatWeekends", SqlValue(event.RepeatWeekends)});
  }
  database_->Execute(BuildSql(SqlMode::kInsert, "Events", values));
}

void RowWriter::Write(const MessageRow& message) const {
  const std::vector<ColumnValue> values{
      {"Sender", SqlValue(message.Sender)},
      {"Recipient", SqlValue(message.Recipient)},
      {"SentDate", SqlValue(FormatDateTime(*regional_, message.SentDate))},
      {"Subject", SqlValue(WithoutApostrophes(message.Subject))},
      {"Content", SqlValue(WithoutApostrophes(message.Content))},
      {"Viewed", YesNo(message.IsViewed)},
      {"Suggestion", SqlValue(message.Suggestion)},
  };
  database_->Execute(BuildSql(SqlMode::kInsert, "Messages", values));
}

std::string RowWriter::NewestSuggestion() const {
  const auto rows =
      OpenQuery(*database_,
                Statement("SELECT TOP 1 EventID FROM Events WHERE SuggestState = '-' ORDER BY EventID DESC"));
  const std::optional<int> id = rows->Next() ? NumberOf(rows->Get(rows->Column("EventID"))) : std::nullopt;
  if (!id) throw DatabaseError("The suggestion that was just written is missing.");
  return std::to_string(*id);
}

}  // namespace orlune::demo
