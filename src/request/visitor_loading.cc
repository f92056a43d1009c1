#include "request/visitor_loading.h"

#include <unordered_set>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "model/calendar.h"
#include "request/login_stamp.h"
#include "store/calendars.h"
#include "store/event_types.h"
#include "store/group_views.h"
#include "store/sessions_table.h"

namespace orlune {
namespace {

/// Returns the requested date when it is not a valid one.
std::string StoreNavigation(const Request& request, const RegionalSettings& regional,
                            SessionValues& session) {
  std::string invalidDate;
  if (const auto calendar = request.QueryParameter("cn"); !calendar.empty())
    session.Set("Calendar", calendar);
  if (const auto date = request.QueryParameter("cd"); !date.empty()) {
    if (ParseDate(regional, date)) {
      session.Set("CurrentDate", date);
    } else {
      invalidDate = date;
    }
  }
  if (const auto mode = request.QueryParameter("dm"); !mode.empty()) session.Set("DisplayMode", mode);
  return invalidDate;
}

void TakeNumber(std::optional<int> number, int least, int most, int& setting) {
  if (number && *number >= least && *number <= most) setting = *number;
}

void TakeText(std::optional<std::string> text, std::string& setting) {
  if (text) setting = std::move(*text);
}

void TakeDisplaySettings(std::optional<DisplaySettings> settings, Visitor& visitor) {
  std::string startMode = "month";
  if (settings) {
    TakeNumber(settings->FirstDayOfWeek, 1, 7, visitor.FirstDayOfWeek);
    TakeText(std::move(settings->Weekend), visitor.Weekend);
    TakeNumber(settings->DayBegin, 0, 23, visitor.DayBegin);
    TakeNumber(settings->DayEnd, 0, 23, visitor.DayEnd);
    TakeText(std::move(settings->SheetFile), visitor.SheetFile);
    TakeText(std::move(settings->StartMode), startMode);
    if (settings->ClockMode == 12) visitor.TimeFormat = "Hh:Nn AM/PM";
  }
  if (visitor.DisplayMode.empty()) visitor.DisplayMode = std::move(startMode);
}

void FallBackToDefaultSheet(const Server& server, const std::string& cssDir, Visitor& visitor) {
  if (!server.Serves(cssDir + visitor.SheetFile)) visitor.SheetFile = "default.css";
}

/// The groups of text lists, without repetitions and empty items, in their order.
std::vector<std::string> DistinctGroups(std::span<const std::string> lists) {
  std::vector<std::string> groups;
  std::unordered_set<std::string_view> known{""};
  for (const std::string& list : lists) {
    ForEachItem(list, [&](std::string_view group) {
      if (known.insert(group).second) groups.emplace_back(group);
    });
  }
  return groups;
}

/// The queries about one visitor, in one round trip where the viewed calendar allows it.
class VisitorQueries {
 public:
  /// `loginId` is that of a login in a sealed cookie, or "".
  VisitorQueries(Connection& database, Visitor& visitor, std::string loginId)
      : database_(database), visitor_(visitor), loginId_(std::move(loginId)) {}

  /// Returns whether the viewed calendar exists.
  bool Run() {
    const std::string& viewed = visitor_.CalName;
    const bool isView = IsGroupView(viewed);
    if (!loginId_.empty()) CreateSessionsTable(database_);
    auto [calendarExists, viewExists, settings, members, memberships, groups, account, isEnded, eventTypes] =
        Ask(database_, viewed.empty() ? Query<bool>() : CalendarExists(viewed),
            isView ? GroupViewExists(viewed.substr(1)) : Query<bool>(),
            DisplaySettingsOf(visitor_.IsLoggedIn() ? std::string_view(visitor_.LoginName) : "admin"),
            isView ? MemberNamesOf(viewed.substr(1)) : Query<std::vector<std::string>>(),
            isView || SeesAllGroups() ? Query<std::vector<std::string>>() : MembershipsOf({{viewed}}),
            visitor_.IsAdministrator() ? GroupNames() : Query<std::vector<std::string>>(),
            visitor_.IsLoggedIn() ? AccountOf(visitor_.LoginName) : Query<std::optional<Account>>(),
            loginId_.empty() ? Query<bool>() : IsEndedLogin(loginId_), AllEventTypes());
    Settings = std::move(settings);
    visitor_.AdminOfGroups = visitor_.IsAdministrator() ? std::move(groups)
                             : account                  ? DistinctGroups({{account->AdminOfGroups}})
                                                        : std::vector<std::string>();
    LoginAccount = std::move(account);
    IsEnded = isEnded;
    visitor_.EventTypes = std::move(eventTypes);
    memberLists_ = isView ? Ask(database_, MembershipsOf(members)) : std::move(memberships);
    return viewed.empty() || calendarExists || viewExists ||
           (!isView && Ask(database_, GroupViewExists(WithoutFirstCharacter(viewed))));
  }

  void ViewOwnCalendar() {
    visitor_.CalName = visitor_.LoginName;
    if (!SeesAllGroups()) memberLists_ = Ask(database_, MembershipsOf({{visitor_.CalName}}));
  }

  void TakeMemberships() {
    if (SeesAllGroups()) {
      visitor_.MemberOfGroups = visitor_.AdminOfGroups;
      return;
    }
    memberLists_.emplace_back("default");
    visitor_.MemberOfGroups = DistinctGroups(memberLists_);
  }

  std::optional<DisplaySettings> Settings{};
  bool IsEnded = false;                   ///< by a logout, though the browser still has its cookie
  std::optional<Account> LoginAccount{};  ///< nothing when nobody is logged in, or the account is gone

 private:
  bool SeesAllGroups() const { return visitor_.CalName == "admin" && visitor_.LoginName == "admin"; }

  Connection& database_;
  Visitor& visitor_;
  const std::string loginId_;
  std::vector<std::string> memberLists_;
};

}  // namespace

View Navigate(const HostingPage& hosting, const Request& request, const Surroundings& surroundings,
              SessionValues& session) {
  std::string invalidDate = StoreNavigation(request, surroundings.Regional, session);
  session.RefreshCookie();
  View view{
      session.Get("Calendar"),
      ParseDate(surroundings.Regional, session.Get("CurrentDate")).value_or(surroundings.Clock.Now().Day),
      session.Get("DisplayMode"), std::move(invalidDate)};
  if (view.Calendar.empty()) view.Calendar = hosting.CalName;
  return view;
}

LoadedVisitor LoadVisitor(const HostingPage& hosting, const ScriptingContext& context,
                          const Surroundings& surroundings, SessionValues& session, Connection& database,
                          View view) {
  LoadedVisitor loaded;
  Visitor& visitor = loaded.Visitor;
  visitor.LoginName = session.Get("Login");
  visitor.CalName = std::move(view.Calendar);
  visitor.CurrentDate = view.Day;
  visitor.DisplayMode = std::move(view.Mode);

  VisitorQueries queries(database, visitor, hosting.UseCookie ? session.Get("LoginId") : "");
  if (!queries.Run()) {
    session.Set("Calendar", visitor.LoginName);
    queries.ViewOwnCalendar();
  }
  queries.TakeMemberships();
  TakeDisplaySettings(std::move(queries.Settings), visitor);
  FallBackToDefaultSheet(*context.Server, hosting.CssDir, visitor);
  // An administrator's account that is gone can only be made anew by who is still logged in to it.
  loaded.HasAccount =
      !queries.IsEnded &&
      (queries.LoginAccount ? IsLoginOf(session, surroundings.Passwords, *queries.LoginAccount)
                            : !visitor.IsLoggedIn() || visitor.IsAdministrator());
  return loaded;
}

}  // namespace orlune
