#include "demo/demo_company_messages.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/text.h"
#include "demo/demo_company_people.h"
#include "store/messages.h"
#include "store/recipients.h"
#include "store/suggestions.h"
#include "texts/english_texts.h"

namespace orlune::demo {
namespace {

/// "{yesterday}" in the content is replaced by the date of the day before. An empty recipient is everybody,
/// including the sender.
struct Message {
  std::string_view Sender;
  std::string_view Recipient;
  int DaysAgo;
  int Hour;
  int Minute;
  std::string_view Subject;
  std::string_view Content;
  bool IsViewed;
};

// clang-format off
constexpr std::array kMessages = std::to_array<Message>({
    {"daniel", "", 13, 9, 4, "New floor in the corridor",
     "Good morning everybody,\r\n\r\nthe corridor gets its new floor next month, see the office calendar. Please take shoes, plants and bicycles home the evening before.\r\n\r\nThanks, Daniel", true},
    {"grace", "", 6, 17, 31, "Thank you",
     "Dear all,\r\n\r\nthe river project passed its acceptance today, three weeks early. That's your work, and I'm proud of it. Cake at the all-hands!\r\n\r\nGrace", true},
    {"jurgen", "admin", 9, 8, 12, "Access for the new colleague",
     "Hi,\r\n\r\ncould you set up an account for Mr. Lorenz? He starts on the first, in engineering.\r\n\r\nJürgen", true},
    {"admin", "jurgen", 9, 10, 40, "Re: Access for the new colleague",
     "Will do. Login name will be \"lorenz\", password in a sealed envelope.", true},
    {"ines", "admin", 3, 14, 2, "Icons for event types",
     "I drew a few more icons, for \"Workshop\" and \"Day off\". Shall I send them over?\r\n\r\nInês", true},
    {"priya", "admin", 2, 16, 25, "Group view",
     "The view Engineering Team is great, thank you! Could Walter's calendar be in it too?\r\n\r\nPriya", false},
    {"daniel", "admin", 1, 11, 48, "Update window",
     "Could the update window be moved by an hour this time? Payroll isn't through before seven.\r\n\r\nDaniel", false},
    {"zoe", "asa", 8, 15, 20, "Nordvik",
     "They liked the demo. Their new head of operations asked for a visit on site, both of us if possible.\r\n\r\nZ.", true},
    {"asa", "zoe", 7, 8, 51, "Re: Nordvik",
     "On {yesterday} you wrote:\r\n> They liked the demo. Their\r\n> new head of operations asked\r\n> for a visit on site, both of\r\n> us if possible.\r\n\r\nSplendid. Suggest a day and I'll come along.", true},
    {"tomas", "asa", 4, 13, 13, "Fair: stand duty",
     "I can take Wednesday & Thursday, but not the first evening, we have a concert.\r\n\r\nTomás", true},
    {"noor", "asa", 2, 7, 40, "Gulf office",
     "They keep Sunday to Thursday, so please don't plan calls for Friday.\r\nMy calendar shows it that way now.", false},
    {"asa", "tomas", 1, 9, 30, "Fair: stand duty",
     "Noted. Hotel is booked until Friday.", false},
    {"lukasz", "jurgen", 5, 18, 5, "Drift",
     "Found it: the reference electrode dries out above 35 degrees. New gel tomorrow.\r\n\r\nŁukasz", true},
    {"niamh", "jurgen", 1, 12, 2, "Test rig",
     "The rig is yours from Monday. Mind the second valve, it sticks.\r\n\r\nNiamh", false},
    {"mikko", "niamh", 3, 10, 10, "Reference probe",
     "Sauna on Saturday, the probe on Monday. In that order.", true},
    {"mikko", "lukasz", 1, 15, 55, "Climbing",
     "Is there a place left on Tuesday?", false},
    {"ines", "priya", 2, 11, 11, "Dashboard colours",
     "I tried the high contrast scheme all week: yellow on white is hard to read, the rest works.", false},
    {"daniel", "grace", 1, 9, 0, "Signatures",
     "Three contracts and the lease are on your desk.", false},
    {"walter", "grace", 4, 20, 15, "Strategy days",
     "Draft agenda is with you. I'd give the second morning to pricing alone.\r\n\r\nW.", true},
    {"grace", "walter", 3, 7, 45, "Re: Strategy days",
     "Agreed. Will you moderate?", false},
});
// clang-format on

struct Answer {
  std::string_view Recipient;
  std::string_view State;
  std::string_view Comments = {};
};

/// An event suggested by `Sender`, `DaysAhead` days from today, moved to Monday when that is a weekend.
struct Suggestion {
  std::string_view Sender;
  std::string_view Title;
  std::string_view EventType;
  int DaysAhead;
  std::string_view Begin;
  std::string_view End;
  std::string_view Comments;
  std::array<Answer, 4> Answers;
};

// clang-format off
constexpr std::array kSuggestions = std::to_array<Suggestion>({
    {"zoe", "Joint visit to Nordvik Waterworks", "Travel", 8, "09:00", "15:00",
     "Train at 7:40, back by five.\r\nLunch is on them.",
     {{{"admin", "undecided"}, {"asa", "accepted", "Count me in!"}, {"jurgen", "undecided"},
       {"lukasz", "declined", "I'm on call that week, sorry."}}}},
    {"grace", "What's next: \"Probe 5\"", "Meeting", 12, "14:00", "16:00",
     "Markets, costs, who would build it. Please come with one idea each.",
     {{{"asa", "undecided"}, {"jurgen", "accepted"}, {"walter", "accepted"}, {"daniel", "undecided"}}}},
});
// clang-format on

DateTime Moment(Date today, int daysAgo, int hour, int minute) {
  return {AddDays(today, -daysAgo), std::chrono::hours{hour} + std::chrono::minutes{minute}};
}

Date WorkingDay(Date day) {
  const int weekday = WeekdayNumber(day);
  if (weekday == 1) return AddDays(day, 1);
  return weekday == 7 ? AddDays(day, 2) : day;
}

OL_Event SuggestedEvent(const Suggestion& suggestion, Date today) {
  OL_Event event;
  event.EventName = suggestion.Title;
  event.Owner = suggestion.Sender;
  event.BeginDate = WorkingDay(AddDays(today, suggestion.DaysAhead));
  event.BeginTime = ParseTime(suggestion.Begin);
  event.EndTime = ParseTime(suggestion.End);
  event.Comments = suggestion.Comments;
  event.EventType = suggestion.EventType;
  return event;
}

std::string SuggestionText(const OL_Event& event, const RegionalSettings& regional) {
  const auto line = [](Text label, std::string_view value) {
    return std::string(EnglishText(label)).append(" <B>").append(value).append("</B><BR>");
  };
  std::string text = "<P>";
  text.append(EnglishText(Text::kSuggestionIntroduction)).append("<P>");
  text += line(Text::kEventName, event.EventName) + line(Text::kEventType, event.EventType) + "<BR>";
  text += line(Text::kEventDate, FormatShortDate(regional, event.BeginDate));
  text += line(Text::kEventTime,
               FormatTime("Hh:Nn", *event.BeginTime) + '-' + FormatTime("Hh:Nn", *event.EndTime)) +
          "<BR>";
  return text.append(EnglishText(Text::kEventComments)).append(" ").append(event.Comments);
}

/// The notification of an answer.
OutgoingMessage AnswerMessage(const OL_Event& event, const Answer& answer, SuggestionState state) {
  const Text word = state == SuggestionState::kAccepted ? Text::kAccepted : Text::kDeclined;
  return {.Sender = std::string(answer.Recipient),
          .Recipients = {event.Owner},
          .Subject = ReplaceAll(ReplaceAll(EnglishText(Text::kNotificationSubject), "%s", EnglishText(word)),
                                "%t", event.EventName),
          .Content = std::string(answer.Comments.empty() ? EnglishText(Text::kNoFurtherInformation)
                                                         : answer.Comments)};
}

void MarkNewestAsViewed(Connection& database, std::string_view recipient) {
  int newest = 0;
  for (const ListedMessage& message : Ask(database, MessagesTo(recipient)))
    newest = std::max(newest, message.Id);
  MarkAsViewed(database, {std::to_string(newest), std::nullopt});
}

void AddSuggestion(Connection& database, const RegionalSettings& regional, const Suggestion& suggestion,
                   Date today) {
  const OL_Event event = SuggestedEvent(suggestion, today);
  OutgoingMessage message{.Sender = event.Owner,
                          .Recipients = {},
                          .Subject = event.EventName,
                          .Content = SuggestionText(event, regional),
                          .SentDate = Moment(today, 2, 13, 37)};
  for (const Answer& answer : suggestion.Answers) message.Recipients.emplace_back(answer.Recipient);
  StoreSuggestion(database, regional, event, message, {});

  const int sendersCopy = FindNewestSenderCopy(database).value();
  for (const Answer& answer : suggestion.Answers) {
    const auto state = SuggestionStateOf(answer.State).value();
    if (state == SuggestionState::kUndecided) continue;
    MarkNewestAsViewed(database, answer.Recipient);
    StoreAnswer(database, sendersCopy, answer.Recipient, state);
    OutgoingMessage note = AnswerMessage(event, answer, state);
    note.SentDate = Moment(today, 1, 10, 22);
    SendMessage(database, regional, note);
  }
}

}  // namespace

void AddMessages(Connection& database, const RegionalSettings& regional, Date today) {
  for (const Message& message : kMessages) {
    const DateTime sent = Moment(today, message.DaysAgo, message.Hour, message.Minute);
    const std::string yesterday = FormatShortDate(regional, AddDays(sent.Day, -1));
    const std::array to{std::string(message.Recipient.empty() ? "default" : message.Recipient)};
    const std::vector<std::string> recipients = ExpandGroupRecipients(database, to);
    SendMessage(database, regional,
                {.Sender = std::string(message.Sender),
                 .Recipients = recipients,
                 .Subject = std::string(message.Subject),
                 .Content = ReplaceAll(message.Content, "{yesterday}", yesterday),
                 .SentDate = sent});
    if (!message.IsViewed) continue;
    for (const std::string& recipient : recipients) MarkNewestAsViewed(database, recipient);
  }
}

void AddSuggestions(Connection& database, const RegionalSettings& regional, Date today) {
  for (const Suggestion& suggestion : kSuggestions) AddSuggestion(database, regional, suggestion, today);
}

}  // namespace orlune::demo
