#include "store/suggestions.h"

#include "store/database_access.h"
#include "store/event_reader.h"
#include "store/event_store.h"
#include "store/messages.h"
#include "store/recipients.h"
#include "store/rows.h"

namespace orlune {
namespace {

/// Returns the number of the copy.
int SaveSendersCopy(Connection& database, const RegionalSettings& regional, OL_Event event,
                    std::span<const std::string> changeable) {
  event.SuggID.clear();
  event.SuggestState = SuggestionState::kSent;
  SaveEvent(database, regional, event, changeable);
  if (event.EventID != 0) return event.EventID;
  const auto newest = FindNewestSenderCopy(database);
  if (!newest) throw DatabaseError("the stored suggestion is missing from Events");
  return *newest;
}

}  // namespace

void StoreSuggestion(Connection& database, const RegionalSettings& regional, OL_Event event,
                     OutgoingMessage message, std::span<const std::string> changeable) {
  const int sendersCopy = SaveSendersCopy(database, regional, event, changeable);
  message.Recipients = ExpandGroupRecipients(database, message.Recipients);
  std::erase(message.Recipients, message.Sender);
  if (message.Recipients.empty()) return;

  event.EventID = 0;
  event.SuggID = std::to_string(sendersCopy);
  event.SuggestState = SuggestionState::kUndecided;
  for (const std::string& recipient : message.Recipients) {
    event.Owner = recipient;
    SaveEvent(database, regional, event, {});
  }
  message.Suggestion = event.SuggID;
  SendMessage(database, regional, std::move(message));
}

void StoreAnswer(Connection& database, int suggId, std::string_view recipient, SuggestionState answer) {
  database.Execute(Statement("UPDATE Events SET SuggestState = '{}' WHERE (SuggID = '{}') AND (Owner = '{}')",
                             StoredText(answer), suggId, recipient));
}

std::optional<int> FindNewestSenderCopy(Connection& database) {
  const auto row = OpenQuery(
      database, Statement("SELECT TOP 1 EventID FROM Events WHERE SuggestState = '-' ORDER BY EventID DESC"));
  return row->Next() ? NumberOf(row->Get(row->Column("EventID"))) : std::nullopt;
}

Query<std::optional<SuggestedEvent>> FindSuggestedEvent(int id) {
  return {Statement("SELECT EventName, Owner FROM Events WHERE (EventID = {})", id), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) {
              return SuggestedEvent{TextIn(row, "EventName"), TextIn(row, "Owner")};
            });
          }};
}

Query<bool> HasReceivedCopy(int suggId, std::string_view owner) {
  return {Statement("SELECT EventID FROM Events WHERE (SuggID = '{}') AND (Owner = '{}')", suggId, owner),
          [](ResultSet& rows) { return rows.Next(); }};
}

Query<std::vector<SuggestionAnswer>> AnswersTo(int suggId) {
  return {Statement("SELECT FriendlyName, SuggestState FROM Events "
                    "INNER JOIN Calendars ON Events.Owner = Calendars.Name "
                    "WHERE (SuggID = '{}')",
                    suggId),
          [](ResultSet& rows) {
            const int name = rows.Column("FriendlyName");
            const int state = rows.Column("SuggestState");
            std::vector<SuggestionAnswer> answers;
            while (rows.Next())
              answers.push_back({std::string(TextOf(rows.Get(name))), ReadSuggestionState(rows.Get(state))});
            return answers;
          }};
}

}  // namespace orlune
