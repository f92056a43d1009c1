#include "demo/demo_company_messages.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/dates.h"
#include "base/text.h"
#include "demo/demo_company_people.h"
#include "texts/english_texts.h"

namespace orlune::demo {
namespace {

/// "{yesterday}" in the content stands for the date of the day before. No recipient: everybody, the sender
/// too.
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

/// An event that `Sender` suggests, `DaysAhead` of today or on the Monday after that.
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

EventRow SuggestedEvent(const Suggestion& suggestion, Date today) {
  EventRow event;
  event.EventName = suggestion.Title;
  event.Owner = suggestion.Sender;
  event.BeginDate = WorkingDay(AddDays(today, suggestion.DaysAhead));
  event.BeginTime = suggestion.Begin;
  event.EndTime = suggestion.End;
  event.Comments = suggestion.Comments;
  event.EventType = suggestion.EventType;
  event.SuggestState = "-";
  return event;
}

std::string SuggestionText(const EventRow& event, const RegionalSettings& regional) {
  const auto line = [](Text label, std::string_view value) {
    return std::string(EnglishText(label)).append(" <B>").append(value).append("</B><BR>");
  };
  std::string text = "<P>";
  text.append(EnglishText(Text::kSuggestionIntroduction)).append("<P>");
  text += line(Text::kEventName, event.EventName) + line(Text::kEventType, event.EventType) + "<BR>";
  text += line(Text::kEventDate, FormatShortDate(regional, event.BeginDate));
  text += line(Text::kEventTime, event.BeginTime + '-' + event.EndTime) + "<BR>";
  return text.append(EnglishText(Text::kEventComments)).append(" ").append(event.Comments);
}

MessageRow AnswerMessage(const EventRow& event, const Answer& answer) {
  const Text state = answer.State == "accepted" ? Text::kAccepted : Text::kDeclined;
  MessageRow message;
  message.Sender = answer.Recipient;
  message.Recipient = event.Owner;
  message.Subject = ReplaceAll(ReplaceAll(EnglishText(Text::kNotificationSubject), "%s", EnglishText(state)),
                               "%t", event.EventName);
  message.Content = answer.Comments.empty() ? EnglishText(Text::kNoFurtherInformation) : answer.Comments;
  return message;
}

void AddSuggestion(const RowWriter& rows, const Suggestion& suggestion, Date today) {
  const EventRow sent = SuggestedEvent(suggestion, today);
  rows.Write(sent);
  EventRow copy = sent;
  copy.SuggID = rows.NewestSuggestion();
  for (const Answer& answer : suggestion.Answers) {
    copy.Owner = answer.Recipient;
    copy.SuggestState = answer.State;
    rows.Write(copy);

    const bool isAnswered = answer.State != "undecided";
    MessageRow message;
    message.Sender = suggestion.Sender;
    message.Recipient = answer.Recipient;
    message.SentDate = Moment(today, 2, 13, 37);
    message.Subject = sent.EventName;
    message.Content = SuggestionText(sent, rows.Regional());
    message.IsViewed = isAnswered;
    message.Suggestion = copy.SuggID;
    rows.Write(message);

    if (!isAnswered) continue;
    MessageRow reply = AnswerMessage(sent, answer);
    reply.SentDate = Moment(today, 1, 10, 22);
    rows.Write(reply);
  }
}

}  // namespace

void AddMessages(const RowWriter& rows, Date today) {
  for (const Message& message : kMessages) {
    MessageRow row;
    row.Sender = message.Sender;
    row.SentDate = Moment(today, message.DaysAgo, message.Hour, message.Minute);
    row.Subject = message.Subject;
    row.Content = ReplaceAll(message.Content, "{yesterday}",
                             FormatShortDate(rows.Regional(), AddDays(row.SentDate.Day, -1)));
    row.IsViewed = message.IsViewed;
    if (!message.Recipient.empty()) {
      row.Recipient = message.Recipient;
      rows.Write(row);
      continue;
    }
    row.Recipient = kAdministrator.Name;
    rows.Write(row);
    for (const Person& person : kPeople) {
      row.Recipient = person.Name;
      rows.Write(row);
    }
  }
}

void AddSuggestions(const RowWriter& rows, Date today) {
  for (const Suggestion& suggestion : kSuggestions) AddSuggestion(rows, suggestion, today);
}

}  // namespace orlune::demo
