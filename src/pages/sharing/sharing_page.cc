#include "pages/sharing/sharing_page.h"

#include <optional>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "exchange/change_log.h"
#include "html/page_frame.h"
#include "pages/sharing/access_key_forms.h"
#include "pages/sharing/calendar_export.h"
#include "pages/sharing/event_import.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

/// Numbers of the address, which the page was led to after an import.
std::optional<ImportSums> ImportedSums(const Request& request) {
  const auto added = WholeNumber<std::size_t>(request.QueryParameter("new"));
  const auto changed = WholeNumber<std::size_t>(request.QueryParameter("changed"));
  const auto unchanged = WholeNumber<std::size_t>(request.QueryParameter("unchanged"));
  if (!added || !changed || !unchanged) return std::nullopt;
  return ImportSums{*added, *changed, *unchanged};
}

TypedNames NamesTyped(const Request& request) {
  return {std::string(request.FormField("device")), std::string(request.FormField("link")),
          std::string(request.QueryParameter("date1")), std::string(request.QueryParameter("date2"))};
}

/// What is made is not to be made again by the form that is shown.
void ShowForm(Visit& visit, Participant user, std::optional<NewKey> made = {}) {
  SharingContent content{std::move(user), SiteAddressOf(visit), IsSafeForPasswords(visit),
                         MayHaveKeys(visit.Context)};
  if (content.HasKeys) {
    content.AppPasswords = AppPasswordsOf(visit.Database, content.User.LoginName);
    content.SecretLinks = SecretLinksOf(visit.Database, content.User.LoginName);
  }
  if (!made) content.Typed = NamesTyped(visit.Request);
  content.Made = std::move(made);
  content.Imported = ImportedSums(visit.Request);
  Html page = WriteSharingForm(visit.Context, content);
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

void Refuse(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
}

void ShowItself(Visit& visit) {
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "/sharing");
}

void ChangeKeys(Visit& visit, Participant user, std::string_view action) {
  if (!MayHaveKeys(visit.Context)) return Refuse(visit);
  if (action == "rmpw") {
    RevokePostedAppPassword(visit);
    return ShowItself(visit);
  }
  if (action == "rmlink") {
    RevokePostedSecretLink(visit);
    return ShowItself(visit);
  }
  if (action == "mkpw") {
    auto made = MakePostedAppPassword(visit);
    return ShowForm(visit, std::move(user), std::move(made));
  }
  const SharedCalendar* calendar = user.Find(visit.Request.FormField("calendar"));
  if (calendar == nullptr) return Refuse(visit);
  auto made = MakePostedSecretLink(visit, *calendar);
  ShowForm(visit, std::move(user), std::move(made));
}

void ImportFile(Visit& visit, Participant user, std::string_view action) {
  const SharedCalendar* calendar = user.Find(visit.Request.FormField("calendar"));
  if (calendar == nullptr || !calendar->MayChange) return Refuse(visit);
  const bool isAnswered =
      action == "preview" ? ShowImportPreview(visit, *calendar) : ImportPosted(visit, *calendar);
  if (!isAnswered) ShowForm(visit, std::move(user));
}

void ExportFile(Visit& visit, Participant user) {
  const SharedCalendar* calendar = user.Find(visit.Request.QueryParameter("calendar"));
  if (calendar == nullptr) return Refuse(visit);
  if (!ExportCalendar(visit, *calendar)) ShowForm(visit, std::move(user));
}

}  // namespace

void ShowSharingPage(Visit& visit) {
  PrepareExchange(visit.Database, *visit.Secrets);
  auto user = LoadParticipant(visit.Database, visit.Context.Visitor.LoginName);
  if (!user) return Refuse(visit);
  const std::string_view action = visit.Request.QueryParameter("act");
  if (action == "export") return ExportFile(visit, *std::move(user));
  if (visit.Request.FormFieldCount() == 0) return ShowForm(visit, *std::move(user));
  if (action == "preview" || action == "import") return ImportFile(visit, *std::move(user), action);
  if (action == "mkpw" || action == "mklink" || action == "rmpw" || action == "rmlink")
    return ChangeKeys(visit, *std::move(user), action);
  ShowForm(visit, *std::move(user));
}

}  // namespace orlune
