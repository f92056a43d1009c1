#include "pages/preferences/preferences_form.h"

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/texts.h"

namespace orlune {
namespace {

Html ToolBar(const PageContext& context) {
  Html bar = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  if (!context.Hosting.NoLoginChange)
    bar.Add(PageButton(context, "p=p&act=login", Text::kChangePassword, "pref_passwd.gif"));
  bar.Add(PageButton(context, "p=p&act=groups", Text::kEditGroupViews, "pref_groups.gif"));
  if (context.Hosting.Sharing)
    bar.Add(ImageLink(context, SharingLink(context), LoadText(context, Text::kDevices), "pref_devices.gif"));
  return bar;
}

Html StartModeList(const PageContext& context, std::string_view startMode) {
  const auto option = [&](Markup mode, Text label) {
    return Html("<OPTION VALUE=\"{}\"{}>{}", mode, SelectedWhen(mode.Text() == startMode),
                Content(LoadText(context, label)));
  };
  return Html("<SELECT NAME=\"mode\">{}{}{}</SELECT>", option("day", Text::kDayMode),
              option("week", Text::kWeekMode), option("month", Text::kMonthMode));
}

Html WeekdayOptions(const PageContext& context, std::string_view selectedDays) {
  Html options;
  int number = 0;
  for (const std::string& name : context.Regional.Names.Weekdays) {
    ++number;
    options.Add("<OPTION VALUE=\"{}\"{}>{}", number, SelectedIf(selectedDays, std::to_string(number)),
                Content(name));
  }
  return options;
}

Html ClockButtons(const PageContext& context, std::string_view clockMode) {
  return Html(
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"12\"{}>{}<BR>"
      "<INPUT TYPE=radio NAME=\"clock\" VALUE=\"24\"{}>{}",
      CheckedIf(clockMode, "12"), Content(LoadText(context, Text::kTwelveHourClock)),
      CheckedIf(clockMode, "24"), Content(LoadText(context, Text::kTwentyFourHourClock)));
}

Html HourList(const PageContext& context, Markup name, std::optional<TimeOfDay> time) {
  if (time) time = std::chrono::floor<std::chrono::hours>(*time);
  return TimeSelect(context, name, time, 60, false);
}

Html ColourSchemeList(const PreferencesContent& content) {
  Html list("<SELECT NAME=\"css\">");
  for (const StyleSheetChoice& sheet : content.StyleSheets) {
    list.Add("<OPTION VALUE=\"{}\"{}>{}", sheet.Id,
             SelectedWhen(std::to_string(sheet.Id) == content.Preferences.StyleSheet),
             OptionLabel(sheet.Name));
  }
  return list.Add("</SELECT>");
}

}  // namespace

Html WritePreferencesForm(const PageContext& context, const PreferencesContent& content) {
  const DisplayPreferences& preferences = content.Preferences;
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(context, "p=p&act=save"));
  page.Add(
      TitleBarOpen("70", Html("{}", Content(LoadText(context, Text::kPreferencesTitle))), ToolBar(context)));
  page.Add(FormTableOpen(context));
  page.Add(FormRow(context, Text::kStartMode, StartModeList(context, preferences.StartMode)));
  page.Add(FormRow(
      context, Text::kFirstDayOfWeek,
      Html("<SELECT NAME=\"firstday\">{}</SELECT>", WeekdayOptions(context, preferences.FirstDayOfWeek))));
  page.Add(FormRow(context, Text::kWeekendDays,
                   Html("<SELECT NAME=\"weekend\" MULTIPLE SIZE=4>{}</SELECT>",
                        WeekdayOptions(context, preferences.Weekend))));
  page.Add(FormRow(context, Text::kClockMode, ClockButtons(context, preferences.ClockMode)));
  page.Add(FormRow(context, Text::kDayBegin, HourList(context, "daybegin", preferences.DayBegin)));
  page.Add(FormRow(context, Text::kDayEnd, HourList(context, "dayend", preferences.DayEnd)));
  page.Add(FormRow(context, Text::kColourScheme, ColourSchemeList(content)));
  page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
           Attribute(LoadText(context, Text::kSavePreferences)));
  page.Add(TableClose());
  return page;
}

}  // namespace orlune
