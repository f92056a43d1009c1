#include "exchange/change_log.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "base/text.h"
#include "exchange/calendar_sources.h"
#include "exchange/object_names.h"
#include "store/calendar_changes.h"
#include "store/calendar_objects.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

constexpr std::size_t kStateDigits = 16;

/// A token: "log-floor-last-state". Every change below the floor is known to who has it; above it changes may
/// come up late, of transactions that ran at the same time as the last one that is known.
struct Token {
  std::string_view Log;
  std::int64_t Floor = 0;
  std::int64_t Last = 0;
  std::string_view State;  ///< a digest of what else the texts of a calendar depend on
};

std::optional<Token> ReadToken(std::string_view text) {
  std::array<std::string_view, 4> parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t end = text.find('-');
    if ((end == std::string_view::npos) != (i + 1 == parts.size())) return std::nullopt;
    parts[i] = text.substr(0, end);
    text.remove_prefix(std::min(text.size(), end == std::string_view::npos ? text.size() : end + 1));
  }
  const auto floor = WholeNumber<std::int64_t>(parts[1]);
  const auto last = WholeNumber<std::int64_t>(parts[2]);
  if (!floor || !last) return std::nullopt;
  return Token{parts[0], *floor, *last, parts[3]};
}

std::string TextOf(const Token& token) {
  return std::string(token.Log) + "-" + std::to_string(token.Floor) + "-" + std::to_string(token.Last) + "-" +
         std::string(token.State);
}

/// What is read of a calendar to know its state.
struct LogState {
  std::vector<std::string> Sources;
  std::string Log;
  std::string State;
  std::int64_t TrimmedTo = 0;
  std::int64_t Last = 0;
  std::int64_t Floor = 0;

  std::string CurrentToken() const { return TextOf(Token{Log, Floor, Last, State}); }
};

std::string DigestOf(const ExchangeTools& tools, const SharedCalendar& calendar,
                     std::span<const std::string> sources, std::span<const CalendarWeekend> weekends) {
  std::string state = std::string(tools.Texts.ZoneName()) + '\0' + tools.PrivateTitle + '\0';
  state += calendar.MayChange ? "full" : "limited";
  for (const std::string& source : sources) state += '\0' + source;
  for (const CalendarWeekend& weekend : weekends)
    state += '\0' + weekend.Calendar + '\0' + weekend.Weekend.value_or("-");
  return tools.Secrets.Digest(state).substr(0, kStateDigits);
}

LogState ReadLog(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar) {
  LogState state;
  state.Sources = SourcesOf(database, calendar);
  const auto [log, trimmedTo, last, weekends] =
      Ask(database, LogNameQuery(), TrimmedTo(), LastMomentIn(state.Sources), WeekendsOf(state.Sources));
  state.Log = log;
  state.State = DigestOf(tools, calendar, state.Sources, weekends);
  state.TrimmedTo = trimmedTo;
  state.Last = std::max(last, trimmedTo);
  state.Floor = std::min(state.Last + 1, database.ChangeHorizon());
  return state;
}

bool IsKnown(const Token& token, const LogState& state) {
  return token.Log == state.Log && token.State == state.State && token.Floor > state.TrimmedTo &&
         token.Floor <= state.Last + 1 && token.Last <= state.Last;
}

/// The names of objects for what the log has. An event that belongs to no object is in it with its number,
/// and so is one that was tied to an object only afterwards, which is no change of that address.
std::vector<std::string> NamesOf(Connection& database, std::vector<std::string> logged) {
  const std::string databaseName = Ask(database, DatabaseNameQuery());
  std::vector<std::string> numbers;
  for (const std::string& entry : logged) {
    if (const auto number = NumberInLog(entry)) numbers.push_back(std::to_string(*number));
  }
  std::unordered_set<int> tied;
  if (!numbers.empty()) {
    for (const ObjectMember& member : Ask(database, MembershipsOfEvents(JoinList(numbers))))
      tied.insert(member.EventId);
  }
  std::vector<std::string> names;
  for (std::string& entry : logged) {
    const auto number = NumberInLog(entry);
    if (!number) names.push_back(std::move(entry));
    if (number && !tied.contains(*number)) names.push_back(NameOfNumber(*number, databaseName));
  }
  return names;
}

}  // namespace

std::string CurrentToken(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar) {
  return ReadLog(database, tools, calendar).CurrentToken();
}

std::optional<CalendarChanges> ChangesSince(Connection& database, const ExchangeTools& tools,
                                            const SharedCalendar& calendar, std::string_view token) {
  const LogState state = ReadLog(database, tools, calendar);
  CalendarChanges changes{state.CurrentToken(), {}, {}};
  if (token == changes.Token) return changes;
  const auto known = ReadToken(token);
  if (!known || !IsKnown(*known, state) || !calendar.MayChange) return std::nullopt;

  std::vector<std::string> names =
      NamesOf(database, Ask(database, NamesChangedSince(state.Sources, known->Floor)));
  std::unordered_set<std::string> present;
  for (const SharedObject& object : LoadObjects(database, tools, calendar, {.Names = names}))
    present.insert(object.Object.Name);
  for (std::string& name : names)
    (present.contains(name) ? changes.Changed : changes.Removed).push_back(std::move(name));
  return changes;
}

std::string FileETag(Connection& database, const ExchangeTools& tools, const Participant& participant,
                     const SharedCalendar& calendar) {
  return tools.Secrets
      .Digest(CurrentToken(database, tools, calendar) + '\0' + participant.LoginName + '\0' + calendar.Name +
              '\0' + calendar.FriendlyName)
      .substr(0, 2 * kStateDigits);
}

void PrepareExchange(Connection& database, Secrets& secrets) {
  CreateSharingTables(database);
  const auto [name, log] = Ask(database, DatabaseNameQuery(), LogNameQuery());
  if (name.empty() || log.empty()) NameDatabase(database, {secrets.MakeSecret(), secrets.MakeSecret()});
}

}  // namespace orlune
