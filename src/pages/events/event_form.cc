#include "pages/events/event_form.h"

#include <span>
#include <unordered_map>
#include <unordered_set>

#include "base/dates.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "html/repetition_labels.h"
#include "pages/events/form_page.h"
#include "pages/events/repetition_rows.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"
#include "store/suggestions.h"

namespace orlune {
namespace {

struct EventFormContent {
  const EventDraft& Draft;
  const std::vector<std::string>* ChosenRecipients;  ///< null unless the event is being suggested
  std::vector<Calendar> Recipients;
  std::vector<SuggestionAnswer> Answers;  ///< none for an event that was not suggested
  std::vector<Calendar> Calendars;        ///< for the user to choose from
};

EventFormContent LoadEventForm(Connection& database, const Visitor& visitor, const EventDraft& draft,
                               const std::vector<std::string>* chosenRecipients) {
  const int id = draft.Event.EventID;
  const std::vector<std::string> offered = visitor.ChangeableCalendars();
  auto [recipients, answers, named] =
      Ask(database, chosenRecipients ? CalendarsExcept(visitor.LoginName) : Query<std::vector<Calendar>>(),
          id != 0 ? AnswersTo(id) : Query<std::vector<SuggestionAnswer>>(),
          offered.empty() ? Query<std::vector<Calendar>>() : CalendarsNamed(offered));
  std::unordered_map<std::string, std::string> friendlyNames;
  for (Calendar& calendar : named)
    friendlyNames.emplace(ToLower(calendar.Name), std::move(calendar.FriendlyName));
  EventFormContent content{draft, chosenRecipients, std::move(recipients), std::move(answers), {}};
  content.Calendars.reserve(offered.size());
  for (const std::string& calendar : offered) {
    const auto known = friendlyNames.find(ToLower(calendar));
    content.Calendars.push_back({calendar, known == friendlyNames.end() ? calendar : known->second});
  }
  return content;
}

std::string ShownText(const EventDraft& draft, const std::string& text) {
  return draft.IsTyped ? WithReferencesShown(text) : text;
}

Html TitleRow(const PageContext& context, const EventDraft& draft) {
  return FieldRow(context, Text::kEventName, "title",
                  Html("<INPUT TYPE=text NAME=\"title\" ID=\"title\" VALUE=\"{}\" SIZE={}>",
                       Attribute(ShownText(draft, draft.Event.EventName)), InputSize(context, 18, 38)));
}

/// Selecting another kind submits the form; the server returns it with the rows of that kind.
Html KindRow(const PageContext& context, const EventDraft& draft, bool isSending) {
  Html list("<SELECT NAME=\"reptype\" ID=\"reptype\" onChange=\"javascript:");
  if (isSending)
    list.Add("document.acForm.action='{}?p=e&act=sendform';", ScriptAttribute(context.Hosting.ScriptName));
  list.Add("document.acForm.submit();\">");
  for (const auto& [kind, label] : kRepetitionKinds)
    list.Add(Choice(context, StoredText(kind), label, kind == draft.Event.Type));
  if (draft.HasListedDays) {
    list.Add(Choice(context, StoredText(Repetition::kListed), Text::kRepeatsOnListedDays,
                    draft.Event.Type == Repetition::kListed));
  }
  return FieldRow(context, Text::kEventRepeat, "reptype", list.Add("</SELECT>"));
}

/// The dates of listed days say themselves which they are.
Html DateField(const PageContext& context, const EventDraft& draft, int number, std::string_view date) {
  const bool isFixed = draft.Event.Type == Repetition::kListed;
  return isFixed ? FixedDateInput(context, number, date) : DateInput(context, number, date);
}

Html BeginRow(const PageContext& context, const EventDraft& draft) {
  return FieldRow(
      context, Text::kEventDate, "date1",
      Html("{}<SPAN ROLE=group ARIA-LABEL=\"{}\">{}-{}</SPAN>", DateField(context, draft, 1, draft.BeginDate),
           Attribute(LoadText(context, Text::kEventTime)),
           TimeSelect(context, "time1", ParseTime(draft.BeginTime), 15, true),
           TimeSelect(context, "time2", ParseTime(draft.EndTime), 15, true)));
}

Html TypeRow(const PageContext& context, const OL_Event& event) {
  Html radios;
  for (const EventTypeEntry& type : context.Visitor.EventTypes) {
    if (type.TypeName.empty()) continue;
    const HtmlPart name = Attribute(type.TypeName);
    radios.Add(
        "<NOBR><LABEL TITLE=\"{}\"><INPUT TYPE=radio NAME=\"type\" VALUE=\"{}\"{}>"
        "<IMG SRC=\"{}{}\" ALT=\"{}\"></LABEL></NOBR>\r\n",
        name, name, CheckedIf(type.TypeName, event.EventType), Attribute(context.Hosting.ImageDir),
        Attribute(EventTypeIcon(context, type.TypeName)), name);
  }
  return GroupRow(context, Text::kEventType, radios);
}

Html CommentsRow(const PageContext& context, const EventDraft& draft) {
  return FieldRow(context, Text::kEventComments, "addinfo",
                  Html("<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=35 ROWS=9>{}</TEXTAREA>",
                       TextAreaContent(ShownText(draft, draft.Event.Comments))));
}

Html RecipientsRow(const PageContext& context, const EventFormContent& content) {
  const std::unordered_set<std::string> chosen(content.ChosenRecipients->begin(),
                                               content.ChosenRecipients->end());
  Html list("<SELECT NAME=\"vastaanottaja\" ID=\"vastaanottaja\" SIZE=8 MULTIPLE>\r\n");
  AddCalendarOptions(
      list, content.Recipients, [&](std::string_view name) { return chosen.contains(std::string(name)); },
      "\r\n");
  list.Add("</SELECT><BR>{}", Content(LoadText(context, Text::kRecipientsHint)));
  return FieldRow(context, Text::kEventRecipients, "vastaanottaja", list);
}

Html StateText(const PageContext& context, SuggestionState state) {
  switch (state) {
    case SuggestionState::kAccepted:
      return Html("<B>{}</B>", Content(LoadText(context, Text::kAccepted)));
    case SuggestionState::kDeclined:
      return Html("<I>{}</I>", Content(LoadText(context, Text::kDeclined)));
    case SuggestionState::kUndecided:
      return Html("{}", Content(LoadText(context, Text::kUndecided)));
    case SuggestionState::kNotSuggested:
    case SuggestionState::kSent:
      break;
  }
  return {};
}

Html StatusRow(const PageContext& context, std::span<const SuggestionAnswer> answers) {
  if (answers.empty()) return {};
  Html lines;
  for (const SuggestionAnswer& answer : answers)
    lines.Add("{}:&nbsp&nbsp{}<BR>", Content(answer.Recipient), StateText(context, answer.State));
  return GroupRow(context, Text::kSuggestionStatus, lines);
}

Html HiddenFields(const PageContext& context, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const std::string id = event.EventID == 0 ? "" : std::to_string(event.EventID);
  return Html("{}{}{}", HiddenField("id", id), HiddenField("suggstate", StoredText(event.SuggestState)),
              HiddenRepetition(context, draft));
}

Html CalendarRow(const PageContext& context, const EventFormContent& content) {
  const OL_Event& event = content.Draft.Event;
  Html list("<SELECT NAME=\"calendar\" ID=\"calendar\">");
  for (const Calendar& calendar : content.Calendars) {
    list.Add("<OPTION VALUE=\"{}\"{}>{}", Attribute(calendar.Name),
             SelectedWhen(EqualIgnoringCase(calendar.Name, event.Owner)), OptionLabel(calendar.FriendlyName));
  }
  list.Add("</SELECT> <LABEL><INPUT TYPE=checkbox NAME=\"private\"{}>{}</LABEL>", CheckedWhen(event.Private),
           Content(LoadText(context, Text::kPrivateEvent)));
  list.Add(HiddenFields(context, content.Draft));
  return FieldRow(context, Text::kEventCalendar, "calendar", list);
}

Html Buttons(const PageContext& context, const OL_Event& event, bool isSending) {
  const bool isNew = event.EventID == 0;
  Html buttons;
  const auto add = [&](Text text, Markup query) {
    if (!buttons.IsEmpty()) buttons.Add("&nbsp;&nbsp;");
    buttons.Add(ActionButton(context, LoadText(context, text), Html("{}", query)));
  };
  if (!isSending) add(Text::kSaveEvent, "p=e&act=save");
  if (isNew && !context.Hosting.NoMessaging)
    add(Text::kSendEvent, isSending ? Markup("p=e&act=send") : Markup("p=e&act=sendform"));
  if (!isNew) add(Text::kDeleteEvent, "p=e&act=delete");
  return buttons;
}

Html WriteEventForm(const PageContext& context, const EventFormContent& content) {
  const EventDraft& draft = content.Draft;
  const OL_Event& event = draft.Event;
  const bool isSending = content.ChosenRecipients != nullptr;
  Html page = FormPageOpen(context, Html("p=e"), Text::kEventTitle, EventToolbar(context));
  page.Add(TitleRow(context, draft));
  page.Add(KindRow(context, draft, isSending));
  page.Add(BeginRow(context, draft));
  if (event.Type != Repetition::kNone)
    page.Add(FieldRow(context, Text::kEventEndDate, "date2", DateField(context, draft, 2, draft.EndDate)));
  page.Add(TypeRow(context, event));
  page.Add(CommentsRow(context, draft));
  AddRepetitionRows(page, context, event);
  if (isSending) page.Add(RecipientsRow(context, content));
  page.Add(StatusRow(context, content.Answers));
  page.Add(CalendarRow(context, content));
  return CloseFormRows(std::move(page), Buttons(context, event, isSending));
}

void ShowForm(Visit& visit, const EventDraft& draft, const std::vector<std::string>* chosenRecipients) {
  const EventFormContent content =
      LoadEventForm(visit.Database, visit.Context.Visitor, draft, chosenRecipients);
  FinishFormPage(visit, WriteEventForm(visit.Context, content));
}

}  // namespace

void ShowEventForm(Visit& visit, const EventDraft& draft) {
  ShowForm(visit, draft, nullptr);
}

void ShowSuggestionForm(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients) {
  ShowForm(visit, draft, &recipients);
}

}  // namespace orlune
