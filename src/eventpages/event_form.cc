#include "eventpages/event_form.h"

#include <unordered_set>

#include "component/component_state.h"
#include "data/calendar_options.h"
#include "data/database_access.h"
#include "data/field.h"
#include "eventpages/form_page.h"
#include "eventpages/repetition_kinds.h"
#include "eventpages/repetition_rows.h"
#include "frame/dates.h"
#include "frame/form_parts.h"
#include "frame/option_label.h"
#include "frame/page_frame.h"
#include "frame/text.h"
#include "frame/texts.h"

namespace orlune {
namespace {

std::string ShownText(const EventDraft& draft, const std::string& text) {
  return draft.IsTyped ? WithReferencesShown(text) : text;
}

Html TitleRow(const ComponentState& state, const EventDraft& draft) {
  return FieldRow(state, 301, "title",
                  Html("<INPUT TYPE=text NAME=\"title\" ID=\"title\" VALUE=\"{}\" SIZE={}>",
                       Attribute(ShownText(draft, draft.Event.EventName)), InputSize(state, 18, 38)));
}

/// Choosing another kind sends the form, which comes back with the rows of that kind.
Html KindRow(const ComponentState& state, const OL_Event& event, bool isSending) {
  Html list("<SELECT NAME=\"reptype\" ID=\"reptype\" onChange=\"javascript:");
  if (isSending) list.Add("document.acForm.action='{}?p=e&act=sendform';", ScriptAttribute(state.ScriptName));
  list.Add("document.acForm.submit();\">");
  for (const RepetitionKind& kind : kRepetitionKinds)
    list.Add(Choice(state, kind.Name, kind.Text, kind.Name.Text() == event.Type));
  return FieldRow(state, 302, "reptype", list.Add("</SELECT>"));
}

Html BeginRow(const ComponentState& state, const EventDraft& draft) {
  return FieldRow(
      state, 309, "date1",
      Html("{}<SPAN ROLE=group ARIA-LABEL=\"{}\">{}-{}</SPAN>", DateInput(state, 1, draft.BeginDate),
           Attribute(LoadText(state, 310)), TimeSelect(state, "time1", ParseTime(draft.BeginTime), 15, true),
           TimeSelect(state, "time2", ParseTime(draft.EndTime), 15, true)));
}

Html TypeRow(const ComponentState& state, const OL_Event& event) {
  Html radios;
  for (const EventTypeEntry& type : state.EventTypes) {
    if (type.TypeName.empty()) continue;
    const HtmlPart name = Attribute(type.TypeName);
    radios.Add(
        "<NOBR><LABEL TITLE=\"{}\"><INPUT TYPE=radio NAME=\"type\" VALUE=\"{}\"{}>"
        "<IMG SRC=\"{}{}\" ALT=\"{}\"></LABEL></NOBR>\r\n",
        name, name, CheckedIf(type.TypeName, event.EventType), Attribute(state.ImageDir),
        Attribute(EventTypeIcon(state, type.TypeName)), name);
  }
  return GroupRow(state, 336, radios);
}

Html CommentsRow(const ComponentState& state, const EventDraft& draft) {
  return FieldRow(state, 312, "addinfo",
                  Html("<TEXTAREA NAME=\"addinfo\" ID=\"addinfo\" COLS=35 ROWS=9>{}</TEXTAREA>",
                       TextAreaContent(ShownText(draft, draft.Event.Comments))));
}

Statement RecipientsQuery(const ComponentState& state) {
  return Statement(
      "SELECT Name, FriendlyName, IsGroup FROM Calendars "
      "WHERE Name <> '{}' ORDER BY IsGroup, FriendlyName",
      state.LoginName);
}

Html RecipientsRow(const ComponentState& state, const std::vector<std::string>& recipients) {
  const std::unordered_set<std::string> chosen(recipients.begin(), recipients.end());
  const auto rows = OpenQuery(*state.Database, RecipientsQuery(state));
  Html list("<SELECT NAME=\"vastaanottaja\" ID=\"vastaanottaja\" SIZE=8 MULTIPLE>\r\n");
  AddCalendarOptions(
      list, *rows, [&](std::string_view name) { return chosen.contains(std::string(name)); }, "\r\n");
  list.Add("</SELECT><BR>{}", Content(LoadText(state, 331)));
  return FieldRow(state, 330, "vastaanottaja", list);
}

Html StateText(const ComponentState& state, std::string_view suggestState) {
  if (suggestState == "accepted") return Html("<B>{}</B>", Content(LoadText(state, 333)));
  if (suggestState == "declined") return Html("<I>{}</I>", Content(LoadText(state, 334)));
  if (suggestState == "undecided") return Html("{}", Content(LoadText(state, 335)));
  return {};
}

Statement AnswersQuery(const OL_Event& event) {
  return Statement(
      "SELECT FriendlyName, SuggestState FROM Events INNER JOIN Calendars ON Events.Owner = Calendars.Name "
      "WHERE (SuggID = '{}')",
      event.EventID);
}

/// What the recipients of a suggestion have answered; nothing for an event that was not suggested.
Html StatusRow(const ComponentState& state, const OL_Event& event) {
  if (event.EventID == 0) return {};
  const auto rows = OpenQuery(*state.Database, AnswersQuery(event));
  const int name = rows->Column("FriendlyName");
  const int suggestState = rows->Column("SuggestState");
  Html lines;
  while (rows->Next()) {
    lines.Add("{}:&nbsp&nbsp{}<BR>", Content(TextOf(rows->Get(name))),
              StateText(state, TextOf(rows->Get(suggestState))));
  }
  return lines.IsEmpty() ? lines : GroupRow(state, 332, lines);
}

Statement FriendlyNameQuery(const std::string& calendar) {
  return Statement("SELECT FriendlyName FROM Calendars WHERE (Name = '{}')", calendar);
}

std::string FriendlyName(const ComponentState& state, const std::string& calendar) {
  const auto row = OpenQuery(*state.Database, FriendlyNameQuery(calendar));
  return row->Next() ? std::string(TextOf(row->Get(row->Column("FriendlyName")))) : calendar;
}

Html HiddenFields(const ComponentState& state, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const std::string id = event.EventID == 0 ? "" : std::to_string(event.EventID);
  return Html("{}{}{}", HiddenField("id", id), HiddenField("suggstate", event.SuggestState),
              HiddenRepetition(state, draft));
}

/// The calendars that the event may be in: the user's own, and the groups that the user administers.
std::vector<std::string> OfferedCalendars(const ComponentState& state) {
  std::vector<std::string> calendars{state.LoginName};
  calendars.insert(calendars.end(), state.AdminOfGroups.begin(), state.AdminOfGroups.end());
  std::erase(calendars, "");
  return calendars;
}

Html CalendarRow(const ComponentState& state, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  Html list("<SELECT NAME=\"calendar\" ID=\"calendar\">");
  for (const std::string& calendar : OfferedCalendars(state)) {
    list.Add("<OPTION VALUE=\"{}\"{}>{}", Attribute(calendar),
             SelectedWhen(EqualIgnoringCase(calendar, event.Owner)),
             OptionLabel(FriendlyName(state, calendar)));
  }
  list.Add("</SELECT> <LABEL><INPUT TYPE=checkbox NAME=\"private\"{}>{}</LABEL>",
           CheckedIf(event.Private ? "yes" : "no", "yes"), Content(LoadText(state, 329)));
  list.Add(HiddenFields(state, draft));
  return FieldRow(state, 328, "calendar", list);
}

Html Buttons(const ComponentState& state, const OL_Event& event, bool isSending) {
  const bool isNew = event.EventID == 0;
  Html buttons;
  const auto add = [&](int text, Markup query) {
    if (!buttons.IsEmpty()) buttons.Add("&nbsp;&nbsp;");
    buttons.Add(ActionButton(state, LoadText(state, text), Html("{}", query)));
  };
  if (!isSending) add(390, "p=e&act=save");
  if (isNew && !state.NoMessaging) add(391, isSending ? Markup("p=e&act=send") : Markup("p=e&act=sendform"));
  if (!isNew) add(392, "p=e&act=delete");
  return buttons;
}

void AnnounceForm(const ComponentState& state, const OL_Event& event, bool isSending) {
  Connection& database = *state.Database;
  if (isSending) database.Announce(RecipientsQuery(state));
  if (event.EventID != 0) database.Announce(AnswersQuery(event));
  for (const std::string& calendar : OfferedCalendars(state)) database.Announce(FriendlyNameQuery(calendar));
}

void ShowForm(ComponentState& state, const EventDraft& draft, const std::vector<std::string>* recipients) {
  const OL_Event& event = draft.Event;
  const bool isSending = recipients != nullptr;
  AnnounceForm(state, event, isSending);
  Html page = FormPageOpen(state, Html("p=e"), 300, EventToolbar(state));
  page.Add(TitleRow(state, draft));
  page.Add(KindRow(state, event, isSending));
  page.Add(BeginRow(state, draft));
  if (event.Type != "none") page.Add(FieldRow(state, 311, "date2", DateInput(state, 2, draft.EndDate)));
  page.Add(TypeRow(state, event));
  page.Add(CommentsRow(state, draft));
  AddRepetitionRows(page, state, event);
  if (isSending) page.Add(RecipientsRow(state, *recipients));
  page.Add(StatusRow(state, event));
  page.Add(CalendarRow(state, draft));
  FinishFormRows(state, std::move(page), Buttons(state, event, isSending));
}

}  // namespace

void ShowEventForm(ComponentState& state, const EventDraft& draft) {
  ShowForm(state, draft, nullptr);
}

void ShowSuggestionForm(ComponentState& state, const EventDraft& draft,
                        const std::vector<std::string>& recipients) {
  ShowForm(state, draft, &recipients);
}

}  // namespace orlune
