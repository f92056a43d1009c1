#include "pages/events/repetition_rows.h"

#include <array>
#include <string>

#include "base/dates.h"
#include "html/form_parts.h"
#include "pages/events/form_page.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {
namespace {

struct NamedChoice {
  Markup Value;
  Text Label;
};

constexpr std::array<NamedChoice, 7> kFrequencies{{{"vko_1", Text::kEveryWeek},
                                                   {"vko_2", Text::kEvery2Weeks},
                                                   {"vko_3", Text::kEvery3Weeks},
                                                   {"kk_1", Text::kFirstInMonth},
                                                   {"kk_2", Text::kSecondInMonth},
                                                   {"kk_3", Text::kThirdInMonth},
                                                   {"kk_4", Text::kFourthInMonth}}};
constexpr std::array<NamedChoice, 4> kWeekends{{{"vkl_ok", Text::kAlsoOnWeekends},
                                                {"vkl_no", Text::kSkipWeekends},
                                                {"vkl_ma", Text::kMoveForward},
                                                {"vkl_pe", Text::kMoveBack}}};

/// The days of the week from the one that the user's week begins on.
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
  for (const NamedChoice& frequency : kFrequencies) {
    list.Add("{}\r\n", Choice(context, frequency.Value, frequency.Label,
                              frequency.Value.Text() == event.RepeatFrequency));
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
  for (const NamedChoice& rule : kWeekends) {
    radios.Add("<NOBR><LABEL><INPUT TYPE=radio NAME=\"repweekends\" VALUE=\"{}\"{}>{}</LABEL></NOBR>\r\n",
               rule.Value, CheckedIf(rule.Value.Text(), event.RepeatWeekends),
               Content(LoadText(context, rule.Label)));
  }
  return GroupRow(context, Text::kRepeatWeekends, radios);
}

void AddHidden(Html& fields, Markup name, std::string_view value) {
  if (!value.empty()) fields.Add(HiddenField(name, value));
}

}  // namespace

void AddRepetitionRows(Html& page, const PageContext& context, const OL_Event& event) {
  if (event.Type == "weekday") {
    page.Add(WeekdaysRow(context, event));
    page.Add(FrequencyRow(context, event));
  }
  if (event.Type == "month") page.Add(DaysRow(context, event));
  if (event.Type == "month" || event.Type == "year") page.Add(WeekendsRow(context, event));
}

Html HiddenRepetition(const PageContext& context, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const bool hasTypedEnd = draft.EndDate != FormatShortDate(context.Regional, context.Visitor.CurrentDate);
  Html fields;
  if (event.Type == "none" && hasTypedEnd) AddHidden(fields, "date2", draft.EndDate);
  if (event.Type != "weekday") {
    AddHidden(fields, "repweekday", event.RepeatWeekday);
    AddHidden(fields, "frequency", event.RepeatFrequency);
  }
  if (event.Type != "month") AddHidden(fields, "repday", event.RepeatDay);
  if (event.Type != "month" && event.Type != "year" && event.RepeatWeekends != kWeekends[0].Value.Text())
    AddHidden(fields, "repweekends", event.RepeatWeekends);
  return fields;
}

}  // namespace orlune
