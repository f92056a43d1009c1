#include "pages/events/repetition_rows.h"

#include <string>

#include "base/dates.h"
#include "html/form_parts.h"
#include "html/repetition_labels.h"
#include "pages/events/form_page.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {
namespace {

/// The weekdays, beginning with the first day of the user's week.
Html WeekdaysRow(const PageContext& context, const OL_Event& event) {
  Html list("<SELECT NAME=\"repweekday\" ID=\"repweekday\" SIZE=4 MULTIPLE>\r\n");
  for (int offset = 0; offset < 7; ++offset) {
    const int weekday = (context.Visitor.FirstDayOfWeek - 1 + offset) % 7 + 1;
    const auto& name = context.Regional.Names.Weekdays[static_cast<std::size_t>(weekday - 1)];
    list.Add("<OPTION VALUE=\"{}\"{}>{}\r\n", weekday,
             SelectedIf(event.RepeatWeekday, std::to_string(weekday)), Content(name));
  }
  return FieldRow(context, Text::kRepeatWeekdays, "repweekday", list.Add("</SELECT>"));
}

Html FrequencyRow(const PageContext& context, const OL_Event& event) {
  Html list("<SELECT NAME=\"frequency\" ID=\"frequency\" SIZE=4>\r\n");
  for (const auto& [frequency, label] : kFrequencyLabels) {
    list.Add("{}\r\n", Choice(context, StoredText(frequency), label, frequency == event.RepeatFrequency));
  }
  return FieldRow(context, Text::kRepeatFrequency, "frequency", list.Add("</SELECT>"));
}

Html DaysRow(const PageContext& context, const OL_Event& event) {
  Html list("<SELECT NAME=\"repday\" ID=\"repday\" SIZE=4 MULTIPLE>\r\n");
  for (int day = 1; day <= 31; ++day)
    list.Add("<OPTION VALUE=\"{}\"{}>{}.\r\n", day, SelectedIf(event.RepeatDay, std::to_string(day)), day);
  return FieldRow(context, Text::kRepeatDays, "repday", list.Add("</SELECT>"));
}

Html WeekendsRow(const PageContext& context, const OL_Event& event) {
  Html radios;
  for (const auto& [rule, label] : kWeekendRuleLabels) {
    radios.Add("<NOBR><LABEL><INPUT TYPE=radio NAME=\"repweekends\" VALUE=\"{}\"{}>{}</LABEL></NOBR>\r\n",
               Attribute(StoredText(rule)), CheckedWhen(rule == event.RepeatWeekends),
               Content(LoadText(context, label)));
  }
  return GroupRow(context, Text::kRepeatWeekends, radios);
}

bool HasWeekendRule(Repetition repetition) {
  return repetition == Repetition::kMonthly || repetition == Repetition::kYearly;
}

void AddHidden(Html& fields, Markup name, std::string_view value) {
  if (!value.empty()) fields.Add(HiddenField(name, value));
}

}  // namespace

void AddRepetitionRows(Html& page, const PageContext& context, const OL_Event& event) {
  if (event.Type == Repetition::kByWeekday) {
    page.Add(WeekdaysRow(context, event));
    page.Add(FrequencyRow(context, event));
  }
  if (event.Type == Repetition::kMonthly) page.Add(DaysRow(context, event));
  if (HasWeekendRule(event.Type)) page.Add(WeekendsRow(context, event));
}

Html HiddenRepetition(const PageContext& context, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const bool hasTypedEnd = draft.EndDate != FormatShortDate(context.Regional, context.Visitor.CurrentDate);
  Html fields;
  if (event.Type == Repetition::kNone && hasTypedEnd) AddHidden(fields, "date2", draft.EndDate);
  if (event.Type != Repetition::kByWeekday) {
    AddHidden(fields, "repweekday", event.RepeatWeekday);
    if (event.RepeatFrequency) fields.Add(HiddenField("frequency", StoredText(*event.RepeatFrequency)));
  }
  if (event.Type != Repetition::kMonthly) AddHidden(fields, "repday", event.RepeatDay);
  if (!HasWeekendRule(event.Type) && event.RepeatWeekends != WeekendRule::kKeep)
    fields.Add(HiddenField("repweekends", StoredText(event.RepeatWeekends)));
  return fields;
}

}  // namespace orlune
