#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/page_host.h"
#include "platform/surroundings.h"
#include "request/hosting_page.h"
#include "request/visit.h"

namespace orlune {

/// The calendar, as a hosting page uses it: created for one request, configured through its properties, given
/// the request by `OnStartPage`, and asked to answer it by `Execute`. Used by one thread.
class Orlune {
 public:
  explicit Orlune(const Surroundings& surroundings);

  /// Where else a hosting page answers: its script, in JSON and without changing the session, and with the
  /// property `Sharing` those who exchange events.
  static std::vector<Companion> Companions(bool isSharing);

  /// Sets the request to answer. Must be called before `Execute`.
  void OnStartPage(const ScriptingContext& passedScriptingContext);
  /// Answers the request with a page or a redirect. Throws DatabaseError when a statement fails.
  void Execute();
  /// The session value under `strKey`: "Login", "Calendar", "CurrentDate" or "DisplayMode"; "" when there is
  /// none.
  std::string GetSessionData(std::string_view strKey) const;

  /// "?" lets users log in with the form, "" does without a login, any other name is logged in unasked.
  void LoginName(std::string name);
  /// The calendar to show at first. Brackets around it are dropped; a leading "!" keeps it after a login.
  void CalName(std::string_view name);
  void ImageDir(std::string directory);
  void CssDir(std::string directory);
  void DBPath(std::string path);
  /// Keeps the session in the cookie "OLOR" instead of the server's session.
  void UseCookie(bool use);
  void ExpireCookie(Date day);
  /// A text that is not a date is ignored.
  void ExpireCookie(std::string_view day);
  /// The URL to redirect to after a logout.
  void ExitToURL(std::string url);
  void ShowTitle(bool show);
  void NoMessaging(bool hide);
  void NoLoginChange(bool hide);
  void NoOLORLink(bool hide);
  void DemoMode(bool demo);
  /// Closes what strangers must not be trusted with; docs/administrators-guide.md lists it.
  void Strict(bool strict);
  /// Without it an account that has no password cannot log in.
  void AllowNoPassword(bool allow);
  /// Exchanges events with other calendars: devices, subscriptions and files.
  void Sharing(bool share);
  /// Chooses the language pack "OLOR_" + `name` + ".Localise"; English stays when there is none. "auto"
  /// chooses for each request what its browser prefers, for the names of months and weekdays, too.
  void Language(std::string_view name);
  /// HTML written before and after the page's body, and into its head. Stands as it is given.
  void HTMLHeader(std::string html);
  void HTMLFooter(std::string html);
  void HeadData(std::string html);

 private:
  void Answer(Connection& database, SessionValues& session);
  void AnswerHiddenHours(Connection& database, SessionValues& session);
  void AnswerLoggedIn(Connection& database, SessionValues& session, const std::function<void(Visit&)>& show);
  void AnswerSharing(Connection& database, SessionValues& session);
  void AnswerLogin(Connection& database, SessionValues& session);
  void EndSealedLogin(Connection& database, const SessionValues& session) const;
  Visit VisitFor(const PageContext& context, Connection& database, SessionValues& session) const;
  PageContext ContextFor(const Visitor& visitor) const;
  void ChooseLanguage();
  SessionValues Session() const { return {hosting_, context_, today_}; }

  const Surroundings& surroundings_;
  Date today_;
  HostingPage hosting_;
  const RegionalSettings* regional_;
  bool usesBrowserLanguage_ = false;
  ScriptingContext context_{};
};

}  // namespace orlune
