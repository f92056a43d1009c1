#include "preferences/preferences_form.h"

#include "component/component_state.h"
#include "data/database_access.h"
#include "data/field.h"
#include "frame/form_parts.h"
#include "frame/links.h"
#include "frame/option_label.h"
#include "frame/page_frame.h"
#include "frame/texts.h"

namespace orlune {
namespace {

Html ToolBar(const ComponentState& state) {
  Html bar = PageButton(state, "p=c", 163, "cal.gif");
  if (!state.NoLoginChange) bar.Add(PageButton(state, "p=p&act=login", 165, "pref_passwd.gif"));
  return bar.Add(PageButton(state, "p=p&act=groups", 693, "pref_groups.gif"));
}

Html Row(const ComponentState& state, int label, const Html& control) {
  return Html("<TR><TD>{}</TD><TD>{}</TD></TR>", Content(LoadText(state, label)), control);
}

Html StartModeList(const ComponentState& state, std::string_view startMode) {
  const auto option = [&](Markup mode, int label) {
    return Html("<OPTION VALUE=\"{}\"{}>{}", mode, SelectedWhen(mode.Text() == startMode),
                Content(LoadText(state, label)));
  };
  return Html("<SELECT NAME=\"mode\">{}{}{}</SELECT>", option("day", 204), option("week", 205),
              option("month", 206));
}

Html WeekdayOptions(const ComponentState& state, std::string_view selectedDays) {
  Html options;
  int number = 0;
  for (const std::string& name : state.Surroundings->Regional.Names.Weekdays) {
    ++number;
    options.Add("<OPTION VALUE=\"{}\"{}>{}", number, SelectedIf(selectedDays, std::to_string(number)),
                Content(name));
  }
  return options;
}

Html ClockButtons(const ComponentState& state, std::string_view clockMode) {
  return Html(
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"12\"{}>{}<BR>"
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"24\"{}>{}",
      CheckedIf(clockMode, "12"), Content(LoadText(state, 607)), CheckedIf(clockMode, "24"),
      Content(LoadText(state, 608)));
}

Html HourList(const ComponentState& state, Markup name, std::optional<TimeOfDay> time) {
  if (time) time = std::chrono::floor<std::chrono::hours>(*time);
  return TimeSelect(state, name, time, 60, false);
}

Html ColourSchemeList(const ComponentState& state, std::string_view styleSheet) {
  Html list("<SELECT NAME=\"css\">");
  const auto rows = OpenQuery(*state.Database, Statement("SELECT SheetID, SheetName FROM StyleSheets"));
  const int sheetId = rows->Column("SheetID");
  const int sheetName = rows->Column("SheetName");
  while (rows->Next()) {
    const int id = NumberOf(rows->Get(sheetId)).value_or(0);
    list.Add("<OPTION VALUE=\"{}\"{}>{}", id, SelectedWhen(std::to_string(id) == styleSheet),
             OptionLabel(TextOf(rows->Get(sheetName))));
  }
  return list.Add("</SELECT>");
}

}  // namespace

void ShowPreferencesForm(ComponentState& state, const DisplayPreferences& preferences) {
  Html page = PageHead(state, state.ProductTitle);
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(state, "p=p&act=save"));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(state, 600))), ToolBar(state)));
  page.Add(FormTableOpen(state));
  page.Add(Row(state, 601, StartModeList(state, preferences.StartMode)));
  page.Add(
      Row(state, 602,
          Html("<SELECT NAME=\"firstday\">{}</SELECT>", WeekdayOptions(state, preferences.FirstDayOfWeek))));
  page.Add(Row(state, 609,
               Html("<SELECT NAME=\"weekend\" MULTIPLE SIZE=4>{}</SELECT>",
                    WeekdayOptions(state, preferences.Weekend))));
  page.Add(Row(state, 606, ClockButtons(state, preferences.ClockMode)));
  page.Add(Row(state, 603, HourList(state, "daybegin", preferences.DayBegin)));
  page.Add(Row(state, 604, HourList(state, "dayend", preferences.DayEnd)));
  page.Add(Row(state, 605, ColourSchemeList(state, preferences.StyleSheet)));
  page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
           Attribute(LoadText(state, 630)));
  page.Add(TableClose());
  FinishFormPage(state, std::move(page));
}

}  // namespace orlune
