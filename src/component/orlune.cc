#include "component/orlune.h"

#include "base/dates.h"
#include "exchange/file_import.h"
#include "pages/admin/admin_page.h"
#include "pages/calendar/calendar_page.h"
#include "pages/calendar/date_picker.h"
#include "pages/calendar/hidden_hours.h"
#include "pages/events/event_page.h"
#include "pages/groupviews/group_view_page.h"
#include "pages/login/login.h"
#include "pages/messages/messages_page.h"
#include "pages/preferences/preferences_page.h"
#include "pages/script/script_texts.h"
#include "pages/sharing/sharing_page.h"
#include "request/texts.h"
#include "request/visitor_loading.h"
#include "store/schema_upgrade.h"
#include "store/sessions_table.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

constexpr std::string_view kTexts = "/texts";
constexpr std::string_view kHours = "/hours";
constexpr std::string_view kSharing = "/sharing";

constexpr std::chrono::hours kTextsLifetime{1};

std::string WithTrailingSlash(std::string directory) {
  if (!directory.ends_with('/')) directory += '/';
  return directory;
}

void ShowPreferencesOrGroupViews(Visit& visit) {
  if (IsGroupViewAction(visit.Request.QueryParameter("act"))) {
    ShowGroupViewPage(visit);
  } else {
    ShowPreferencesPage(visit);
  }
}

void ShowPage(std::string_view page, Visit& visit) {
  if (page == "c") ShowCalendarPage(visit);
  if (page == "a") ShowAdminPage(visit);
  if (page == "e") ShowEventPage(visit);
  if (page == "m") ShowMessagesPage(visit);
  if (page == "p") ShowPreferencesOrGroupViews(visit);
  if (page == "s") ShowDatePicker(visit);
}

void ShowRequestedPage(Visit& visit) {
  const std::string_view page = visit.Request.QueryParameter("p");
  ShowPage(page.empty() ? "c" : page, visit);
}

/// A link of the page at `page`, such as "css/", as one that is the same on every page.
std::string AbsoluteLink(std::string_view page, std::string link) {
  if (link.starts_with('/') || link.find(':') != std::string::npos) return link;
  return std::string(page.substr(0, page.rfind('/') + 1)) + link;
}

}  // namespace

Orlune::Orlune(const Surroundings& surroundings)
    : surroundings_(surroundings), today_(surroundings.Clock.Now().Day), regional_(&surroundings.Regional) {
  hosting_.ExpireCookie = today_ + std::chrono::days{1};
}

void Orlune::LoginName(std::string name) {
  hosting_.LoginName = std::move(name);
}

void Orlune::CalName(std::string_view name) {
  if (name.empty()) return;
  if (name.size() >= 2 && name.starts_with('[') && name.ends_with(']'))
    name = name.substr(1, name.size() - 2);
  hosting_.CalNameFixed = name.starts_with('!');
  if (hosting_.CalNameFixed) name.remove_prefix(1);
  hosting_.CalName = name;
}

void Orlune::ImageDir(std::string directory) {
  hosting_.ImageDir = WithTrailingSlash(std::move(directory));
}
void Orlune::CssDir(std::string directory) {
  hosting_.CssDir = WithTrailingSlash(std::move(directory));
}
void Orlune::DBPath(std::string path) {
  hosting_.DBPath = std::move(path);
}
void Orlune::UseCookie(bool use) {
  hosting_.UseCookie = use;
}
void Orlune::ExpireCookie(Date day) {
  hosting_.ExpireCookie = day;
}

void Orlune::ExpireCookie(std::string_view day) {
  hosting_.ExpireCookie = ParseDate(surroundings_.Regional, day).value_or(hosting_.ExpireCookie);
}

void Orlune::ExitToURL(std::string url) {
  hosting_.ExitToURL = std::move(url);
}
void Orlune::ShowTitle(bool show) {
  hosting_.ShowTitle = show;
}
void Orlune::NoMessaging(bool hide) {
  hosting_.NoMessaging = hide;
}
void Orlune::NoLoginChange(bool hide) {
  hosting_.NoLoginChange = hide;
}
void Orlune::NoOLORLink(bool hide) {
  hosting_.NoOLORLink = hide;
}
void Orlune::DemoMode(bool demo) {
  hosting_.DemoMode = demo;
}

void Orlune::Strict(bool strict) {
  hosting_.Strict = strict;
}
void Orlune::AllowNoPassword(bool allow) {
  hosting_.AllowNoPassword = allow;
}

void Orlune::Sharing(bool share) {
  hosting_.Sharing = share;
}

void Orlune::Language(std::string_view name) {
  usesBrowserLanguage_ = name == "auto";
  if (!usesBrowserLanguage_)
    hosting_.Localiser = surroundings_.Localisers.Create("OLOR_" + std::string(name) + ".Localise");
}

void Orlune::HTMLHeader(std::string html) {
  hosting_.HTMLHeader = std::move(html);
}
void Orlune::HTMLFooter(std::string html) {
  hosting_.HTMLFooter = std::move(html);
}
void Orlune::HeadData(std::string html) {
  hosting_.HeadData = std::move(html);
}

std::string Orlune::GetSessionData(std::string_view strKey) const {
  return Session().Get(strKey);
}

std::vector<Companion> Orlune::Companions(bool isSharing) {
  std::vector<Companion> companions{{kTexts}, {kHours}};
  if (isSharing) companions.push_back({kSharing, true, kMostFileBytes});
  return companions;
}

void Orlune::OnStartPage(const ScriptingContext& passedScriptingContext) {
  context_ = passedScriptingContext;
  hosting_.ScriptName = context_.Request->ServerVariable("SCRIPT_NAME");
  ChooseLanguage();
}

void Orlune::ChooseLanguage() {
  if (usesBrowserLanguage_) {
    hosting_.Localiser =
        surroundings_.Localisers.CreatePreferred(context_.Request->ServerVariable("HTTP_ACCEPT_LANGUAGE"));
  }
  const auto tag = hosting_.Localiser ? hosting_.Localiser->Loadstring(kLanguageTagText) : std::nullopt;
  if (usesBrowserLanguage_) regional_ = &surroundings_.DateLanguages.In(tag.value_or("en"));
  if (tag || usesBrowserLanguage_) context_.Response->SetLanguage(tag.value_or("en"));
}

void Orlune::Execute() {
  const std::string_view companion = context_.Request->ServerVariable("PATH_INFO");
  if (companion == kTexts) {
    context_.Response->SetExpires(kTextsLifetime);
    context_.Response->SetContentType("application/json");
    return context_.Response->Write(ScriptTexts(hosting_.Localiser.get()));
  }
  context_.Response->SetExpires(std::chrono::minutes{0});
  std::unique_ptr<Connection> database;
  try {
    database = surroundings_.Databases.Open(hosting_.DBPath);
  } catch (const DatabaseError&) {
    context_.Response->SetStatus(503);
    context_.Response->Write("Could not open database " + hosting_.DBPath + ".");
    return;
  }
  UpgradeSchema(*database);
  if (hosting_.Sharing) CreateSharingTablesForPages(*database);
  SessionValues session = Session();
  if (companion.empty()) return Answer(*database, session);
  if (companion == kSharing) return AnswerSharing(*database, session);
  AnswerHiddenHours(*database, session);
}

void Orlune::Answer(Connection& database, SessionValues& session) {
  const bool isLoggedIn = hosting_.LoginName.empty() || !session.Get("Login").empty();
  if (isLoggedIn && context_.Request->QueryParameter("p") != "l") {
    AnswerLoggedIn(database, session, ShowRequestedPage);
  } else {
    AnswerLogin(database, session);
  }
}

void Orlune::AnswerHiddenHours(Connection& database, SessionValues& session) {
  const bool isLoggedIn = hosting_.LoginName.empty() || !session.Get("Login").empty();
  if (!isLoggedIn) return context_.Response->SetStatus(403);
  const Request& request = *context_.Request;
  View view{std::string(request.QueryParameter("calendar")), today_};
  if (const auto date = request.QueryParameter("date"); !date.empty()) {
    const auto day = ParseDate(surroundings_.Regional, date);
    if (!day) return context_.Response->SetStatus(400);
    view.Day = *day;
  }
  const LoadedVisitor loaded =
      LoadVisitor(hosting_, context_, surroundings_, session, database, std::move(view));
  if (!loaded.HasAccount) return context_.Response->SetStatus(403);
  const PageContext context = ContextFor(loaded.Visitor);
  Visit visit = VisitFor(context, database, session);
  TellHiddenHours(visit);
}

/// Its address is another than that of the hosting page, whose links may be relative.
void Orlune::AnswerSharing(Connection& database, SessionValues& session) {
  const bool isOffered =
      hosting_.Sharing && surroundings_.CalendarTexts != nullptr && surroundings_.Secrets != nullptr;
  if (!isOffered) return context_.Response->SetStatus(404);
  if (session.Get("Login").empty()) return context_.Response->Redirect(hosting_.ScriptName);
  hosting_.ImageDir = AbsoluteLink(hosting_.ScriptName, std::move(hosting_.ImageDir));
  hosting_.CssDir = AbsoluteLink(hosting_.ScriptName, std::move(hosting_.CssDir));
  AnswerLoggedIn(database, session, ShowSharingPage);
}

void Orlune::AnswerLoggedIn(Connection& database, SessionValues& session,
                            const std::function<void(Visit&)>& show) {
  View view = Navigate(hosting_, *context_.Request, surroundings_, session);
  const std::string invalidDate = view.InvalidDate;
  const LoadedVisitor loaded =
      LoadVisitor(hosting_, context_, surroundings_, session, database, std::move(view));
  if (!loaded.HasAccount) {
    // Changes of a user whose account was deleted or renamed would belong to no calendar.
    session.Logout();
    context_.Response->Redirect(hosting_.ScriptName);
    return;
  }
  const PageContext context = ContextFor(loaded.Visitor);
  Visit visit = VisitFor(context, database, session);
  if (!invalidDate.empty()) AddAlert(visit, Text::kInvalidDate, {invalidDate});
  show(visit);
}

void Orlune::AnswerLogin(Connection& database, SessionValues& session) {
  const bool isLeaving = !session.Get("Login").empty() && context_.Request->QueryParameter("p") == "l" &&
                         !hosting_.ExitToURL.empty() && context_.Request->FormFieldCount() == 0;
  EndSealedLogin(database, session);
  session.Logout();
  if (isLeaving) {
    context_.Response->Redirect(hosting_.ExitToURL);
    return;
  }
  Visitor nobody;
  nobody.LoginName = hosting_.LoginName;
  nobody.CalName = hosting_.CalName;
  nobody.CurrentDate = today_;
  const PageContext context = ContextFor(nobody);
  Visit visit = VisitFor(context, database, session);
  LoginStep(visit);
}

Visit Orlune::VisitFor(const PageContext& context, Connection& database, SessionValues& session) const {
  return {context,
          database,
          *context_.Request,
          *context_.Response,
          session,
          surroundings_.Clock,
          surroundings_.Passwords,
          surroundings_.Logins,
          surroundings_.CalendarTexts,
          surroundings_.Secrets};
}

// Copies of the cookie that somebody else may have are worth nothing after a logout.
void Orlune::EndSealedLogin(Connection& database, const SessionValues& session) const {
  const std::string loginId = session.Get("LoginId");
  if (!hosting_.UseCookie || loginId.empty()) return;
  const auto secondsOf = [](Date day) { return std::chrono::seconds(day.time_since_epoch()).count(); };
  // A day more for each of the two clocks, the civil one of cookies and that of the table in UTC.
  EndLogin(database, loginId, secondsOf(hosting_.ExpireCookie + std::chrono::days{2}),
           secondsOf(today_ - std::chrono::days{1}));
}

PageContext Orlune::ContextFor(const Visitor& visitor) const {
  const bool isCompatible =
      context_.Request->ServerVariable("HTTP_USER_AGENT").find("compatible") != std::string_view::npos;
  return {hosting_, visitor, *regional_, today_, isCompatible};
}

}  // namespace orlune
