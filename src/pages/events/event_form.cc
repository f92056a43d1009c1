#include "pages/events/event_form.h"

#include <unordered_set>

#include "base/dates.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/option_label.h"
#include "html/page_frame.h"
#include "pages/events/form_page.h"
#include "pages/events/repetition_kinds.h"
#include "pages/events/repetition_rows.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

std::string ShownText(const EventDraft& draft, const std::string& text) {
  return draft.IsTyped ? WithReferencesShown(text) : text;
}

Html TitleRow(const Visit& visit, const EventDraft& draft) {
  return FieldRow(visit, Text::kEventName, "title",
                  Html("<INPUT TYPE=text NAME=\"title\" ID=\"title\" VALUE=\"{}\" SIZE={}>",
                       Attribute(ShownText(draft, draft.Event.EventName)), InputSize(visit, 18, 38)));
}

/// Choosing another kind sends the form, which comes back with the rows of that kind.
Html KindRow(const Visit& visit, const OL_Event& event, bool isSending) {
  Html list("<SELECT NAME=\"reptype\" ID=\"reptype\" onChange=\"javascript:");
  if (isSending)
    list.Add("document.acForm.action='{}?p=e&act=sendform';",
             ScriptAttribute(visit.Context.Hosting.ScriptName));
  list.Add("document.acForm.submit();\">");
  for (const RepetitionKind& kind : kRepetitionKinds)
    list.Add(Choice(visit, kind.Name, kind.Label, kind.Name.Text() == event.Type));
  return FieldRow(visit, Text::kEventRepeat, "reptype", list.Add("</SELECT>"));
}

Html BeginRow(const Visit& visit, const EventDraft& draft) {
  return FieldRow(visit, Text::kEventDate, "date1",
                  Html("{}<SPAN ROLE=group ARIA-LABEL=\"{}\">{}-{}</SPAN>",
                       DateInput(visit, 1, draft.BeginDate), Attribute(LoadText(visit, Text::kEventTime)),
                       TimeSelect(visit, "time1", ParseTime(draft.BeginTime), 15, true),
                       TimeSelect(visit, "time2", ParseTime(draft.EndTime), 15, true)));
}

Html TypeRow(const Visit& visit, const OL_Event& event) {
  Html radios;
  for (const EventTypeEntry& type : visit.Context.Visitor.EventTypes) {
    if (type.TypeName.empty()) continue;
    const HtmlPart name = Attribute(type.TypeName);
    radios.Add(
        "<NOBR><LABEL TITLE=\"{}\"><INPUT TYPE=radio NAME=\"type\" VALUE=\"{}\"{}>"
        "<IMG SRC=\"{}{}\" ALT=\"{}\"></LABEL></NOBR>\r\n",
        name, name, CheckedIf(type.TypeName, event.EventType), Attribute(visit.Context.Hosting.ImageDir),
        Attribute(EventTypeIcon(visit, type.TypeName)), name);
  }
  return GroupRow(visit, Text::kEventType, radios);
}

Html CommentsRow(const Visit& visit, const EventDraft& draft) {
  return FieldRow(visit, Text::kEventComments, "addinfo",
                  Html("<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=35 ROWS=9>{}</TEXTAREA>",
                       TextAreaContent(ShownText(draft, draft.Event.Comments))));
}

Statement RecipientsQuery(const Visit& visit) {
  return Statement(
      "SELECT Name, FriendlyName, IsGroup FROM Calendars "
      "WHERE Name <> '{}' ORDER BY IsGroup, FriendlyName",
      visit.Context.Visitor.LoginName);
}

Html RecipientsRow(const Visit& visit, const std::vector<std::string>& recipients) {
  const std::unordered_set<std::string> chosen(recipients.begin(), recipients.end());
  const auto rows = OpenQuery(visit.Database, RecipientsQuery(visit));
  Html list("<SELECT NAME=\"vastaanottaja\" ID=\"vastaanottaja\" SIZE=8 MULTIPLE>\r\n");
  AddCalendarOptions(
      list, *rows, [&](std::string_view name) { return chosen.contains(std::string(name)); }, "\r\n");
  list.Add("</SELECT><BR>{}", Content(LoadText(visit, Text::kRecipientsHint)));
  return FieldRow(visit, Text::kEventRecipients, "vastaanottaja", list);
}

Html StateText(const Visit& visit, std::string_view suggestState) {
  if (suggestState == "accepted") return Html("<B>{}</B>", Content(LoadText(visit, Text::kAccepted)));
  if (suggestState == "declined") return Html("<I>{}</I>", Content(LoadText(visit, Text::kDeclined)));
  if (suggestState == "undecided") return Html("{}", Content(LoadText(visit, Text::kUndecided)));
  return {};
}

Statement AnswersQuery(const OL_Event& event) {
  return Statement(
      "SELECT FriendlyName, SuggestState FROM Events INNER JOIN Calendars ON Events.Owner = Calendars.Name "
      "WHERE (SuggID = '{}')",
      event.EventID);
}

/// What the recipients of a suggestion have answered; nothing for an event that was not suggested.
Html StatusRow(const Visit& visit, const OL_Event& event) {
  if (event.EventID == 0) return {};
  const auto rows = OpenQuery(visit.Database, AnswersQuery(event));
  const int name = rows->Column("FriendlyName");
  const int suggestState = rows->Column("SuggestState");
  Html lines;
  while (rows->Next()) {
    lines.Add("{}:&nbsp&nbsp{}<BR>", Content(TextOf(rows->Get(name))),
              StateText(visit, TextOf(rows->Get(suggestState))));
  }
  return lines.IsEmpty() ? lines : GroupRow(visit, Text::kSuggestionStatus, lines);
}

Statement FriendlyNameQuery(const std::string& calendar) {
  return Statement("SELECT FriendlyName FROM Calendars WHERE (Name = '{}')", calendar);
}

std::string FriendlyName(const Visit& visit, const std::string& calendar) {
  const auto row = OpenQuery(visit.Database, FriendlyNameQuery(calendar));
  return row->Next() ? std::string(TextOf(row->Get(row->Column("FriendlyName")))) : calendar;
}

Html HiddenFields(const Visit& visit, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const std::string id = event.EventID == 0 ? "" : std::to_string(event.EventID);
  return Html("{}{}{}", HiddenField("id", id), HiddenField("suggstate", event.SuggestState),
              HiddenRepetition(visit, draft));
}

/// The calendars that the event may be in: the user's own, and the groups that the user administers.
std::vector<std::string> OfferedCalendars(const Visit& visit) {
  std::vector<std::string> calendars{visit.Context.Visitor.LoginName};
  calendars.insert(calendars.end(), visit.Context.Visitor.AdminOfGroups.begin(),
                   visit.Context.Visitor.AdminOfGroups.end());
  std::erase(calendars, "");
  return calendars;
}

Html CalendarRow(const Visit& visit, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  Html list("<SELECT NAME=\"calendar\" ID=\"calendar\">");
  for (const std::string& calendar : OfferedCalendars(visit)) {
    list.Add("<OPTION VALUE=\"{}\"{}>{}", Attribute(calendar),
             SelectedWhen(EqualIgnoringCase(calendar, event.Owner)),
             OptionLabel(FriendlyName(visit, calendar)));
  }
  list.Add("</SELECT> <LABEL><INPUT TYPE=checkbox NAME=\"private\"{}>{}</LABEL>",
           CheckedIf(event.Private ? "yes" : "no", "yes"), Content(LoadText(visit, Text::kPrivateEvent)));
  list.Add(HiddenFields(visit, draft));
  return FieldRow(visit, Text::kEventCalendar, "calendar", list);
}

Html Buttons(const Visit& visit, const OL_Event& event, bool isSending) {
  const bool isNew = event.EventID == 0;
  Html buttons;
  const auto add = [&](Text text, Markup query) {
    if (!buttons.IsEmpty()) buttons.Add("&nbsp;&nbsp;");
    buttons.Add(ActionButton(visit, LoadText(visit, text), Html("{}", query)));
  };
  if (!isSending) add(Text::kSaveEvent, "p=e&act=save");
  if (isNew && !visit.Context.Hosting.NoMessaging)
    add(Text::kSendEvent, isSending ? Markup("p=e&act=send") : Markup("p=e&act=sendform"));
  if (!isNew) add(Text::kDeleteEvent, "p=e&act=delete");
  return buttons;
}

void AnnounceForm(const Visit& visit, const OL_Event& event, bool isSending) {
  Connection& database = visit.Database;
  if (isSending) database.Announce(RecipientsQuery(visit));
  if (event.EventID != 0) database.Announce(AnswersQuery(event));
  for (const std::string& calendar : OfferedCalendars(visit)) database.Announce(FriendlyNameQuery(calendar));
}

void ShowForm(Visit& visit, const EventDraft& draft, const std::vector<std::string>* recipients) {
  const OL_Event& event = draft.Event;
  const bool isSending = recipients != nullptr;
  AnnounceForm(visit, event, isSending);
  Html page = FormPageOpen(visit, Html("p=e"), Text::kEventTitle, EventToolbar(visit));
  page.Add(TitleRow(visit, draft));
  page.Add(KindRow(visit, event, isSending));
  page.Add(BeginRow(visit, draft));
  if (event.Type != "none")
    page.Add(FieldRow(visit, Text::kEventEndDate, "date2", DateInput(visit, 2, draft.EndDate)));
  page.Add(TypeRow(visit, event));
  page.Add(CommentsRow(visit, draft));
  AddRepetitionRows(page, visit, event);
  if (isSending) page.Add(RecipientsRow(visit, *recipients));
  page.Add(StatusRow(visit, event));
  page.Add(CalendarRow(visit, draft));
  FinishFormRows(visit, std::move(page), Buttons(visit, event, isSending));
}

}  // namespace

void ShowEventForm(Visit& visit, const EventDraft& draft) {
  ShowForm(visit, draft, nullptr);
}

void ShowSuggestionForm(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients) {
  ShowForm(visit, draft, &recipients);
}

}  // namespace orlune
