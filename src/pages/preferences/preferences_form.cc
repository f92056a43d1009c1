#include "pages/preferences/preferences_form.h"

#include "html/form_parts.h"
#include "html/links.h"
#include "html/option_label.h"
#include "html/page_frame.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html ToolBar(const Visit& visit) {
  Html bar = PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif");
  if (!visit.Context.Hosting.NoLoginChange)
    bar.Add(PageButton(visit, "p=p&act=login", Text::kChangePassword, "pref_passwd.gif"));
  return bar.Add(PageButton(visit, "p=p&act=groups", Text::kEditGroupViews, "pref_groups.gif"));
}

Html Row(const Visit& visit, Text label, const Html& control) {
  return Html("<TR><TD>{}</TD><TD>{}</TD></TR>", Content(LoadText(visit, label)), control);
}

Html StartModeList(const Visit& visit, std::string_view startMode) {
  const auto option = [&](Markup mode, Text label) {
    return Html("<OPTION VALUE=\"{}\"{}>{}", mode, SelectedWhen(mode.Text() == startMode),
                Content(LoadText(visit, label)));
  };
  return Html("<SELECT NAME=\"mode\">{}{}{}</SELECT>", option("day", Text::kDayMode),
              option("week", Text::kWeekMode), option("month", Text::kMonthMode));
}

Html WeekdayOptions(const Visit& visit, std::string_view selectedDays) {
  Html options;
  int number = 0;
  for (const std::string& name : visit.Context.Regional.Names.Weekdays) {
    ++number;
    options.Add("<OPTION VALUE=\"{}\"{}>{}", number, SelectedIf(selectedDays, std::to_string(number)),
                Content(name));
  }
  return options;
}

Html ClockButtons(const Visit& visit, std::string_view clockMode) {
  return Html(
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"12\"{}>{}<BR>"
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"24\"{}>{}",
      CheckedIf(clockMode, "12"), Content(LoadText(visit, Text::kTwelveHourClock)),
      CheckedIf(clockMode, "24"), Content(LoadText(visit, Text::kTwentyFourHourClock)));
}

Html HourList(const Visit& visit, Markup name, std::optional<TimeOfDay> time) {
  if (time) time = std::chrono::floor<std::chrono::hours>(*time);
  return TimeSelect(visit, name, time, 60, false);
}

Html ColourSchemeList(const Visit& visit, std::string_view styleSheet) {
  Html list("<SELECT NAME=\"css\">");
  const auto rows = OpenQuery(visit.Database, Statement("SELECT SheetID, SheetName FROM StyleSheets"));
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

void ShowPreferencesForm(Visit& visit, const DisplayPreferences& preferences) {
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(visit, "p=p&act=save"));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(visit, Text::kPreferencesTitle))), ToolBar(visit)));
  page.Add(FormTableOpen(visit));
  page.Add(Row(visit, Text::kStartMode, StartModeList(visit, preferences.StartMode)));
  page.Add(
      Row(visit, Text::kFirstDayOfWeek,
          Html("<SELECT NAME=\"firstday\">{}</SELECT>", WeekdayOptions(visit, preferences.FirstDayOfWeek))));
  page.Add(Row(visit, Text::kWeekendDays,
               Html("<SELECT NAME=\"weekend\" MULTIPLE SIZE=4>{}</SELECT>",
                    WeekdayOptions(visit, preferences.Weekend))));
  page.Add(Row(visit, Text::kClockMode, ClockButtons(visit, preferences.ClockMode)));
  page.Add(Row(visit, Text::kDayBegin, HourList(visit, "daybegin", preferences.DayBegin)));
  page.Add(Row(visit, Text::kDayEnd, HourList(visit, "dayend", preferences.DayEnd)));
  page.Add(Row(visit, Text::kColourScheme, ColourSchemeList(visit, preferences.StyleSheet)));
  page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
           Attribute(LoadText(visit, Text::kSavePreferences)));
  page.Add(TableClose());
  FinishFormPage(visit, std::move(page));
}

}  // namespace orlune
