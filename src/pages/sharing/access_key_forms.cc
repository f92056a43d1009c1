#include "pages/sharing/access_key_forms.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/lists.h"
#include "base/text.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

constexpr std::size_t kMostNameCharacters = 100;

/// In one line, whatever was posted.
std::string PostedName(const Visit& visit, std::string_view field) {
  std::string name(visit.Request.FormField(field));
  std::ranges::replace_if(
      name, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return std::string(TrimBlanks(name));
}

/// Appends an alert for each reason against a further key of that name.
void CheckName(Visit& visit, const std::string& name, const std::vector<AccessKey>& keys) {
  if (name.empty()) AddAlert(visit, Text::kNameMissing);
  CheckLengths(visit, {{Text::kKeyName, name, kMostNameCharacters}});
  if (std::ranges::any_of(keys, [&](const AccessKey& key) { return EqualIgnoringCase(key.Label, name); }))
    AddAlert(visit, Text::kKeyNameTaken, {name});
}

KeyTools ToolsOf(const Visit& visit) {
  return {*visit.Secrets, visit.Context.Regional, visit.Context.Today};
}

std::optional<NewKey> Shown(Visit& visit, NewKey key, std::optional<std::string> secret) {
  if (!secret) {
    AddAlert(visit, Text::kTooManyKeys, {std::to_string(kMostKeysOfUser)});
    return std::nullopt;
  }
  key.Secret = *std::move(secret);
  return key;
}

}  // namespace

bool MayHaveKeys(const PageContext& context) {
  const HostingPage& hosting = context.Hosting;
  const bool isEverybodys = EqualIgnoringCase(hosting.LoginName, context.Visitor.LoginName);
  return !isEverybodys && !(hosting.DemoMode && context.Visitor.IsAdministrator());
}

std::optional<NewKey> MakePostedAppPassword(Visit& visit) {
  const std::string& user = visit.Context.Visitor.LoginName;
  const std::string name = PostedName(visit, "device");
  CheckName(visit, name, AppPasswordsOf(visit.Database, user));
  if (!visit.Alerts.empty()) return std::nullopt;
  return Shown(visit, {name, {}, false}, MakeAppPassword(visit.Database, ToolsOf(visit), user, name));
}

std::optional<NewKey> MakePostedSecretLink(Visit& visit, const SharedCalendar& calendar) {
  const std::string& user = visit.Context.Visitor.LoginName;
  const std::string name = PostedName(visit, "link");
  CheckName(visit, name, SecretLinksOf(visit.Database, user));
  if (!visit.Alerts.empty()) return std::nullopt;
  return Shown(visit, {name, {}, true},
               MakeSecretLink(visit.Database, ToolsOf(visit), user, calendar.Name, name));
}

void RevokePostedAppPassword(Visit& visit) {
  if (const auto id = RowNumber(visit.Request.FormField("key")))
    RevokeAppPassword(visit.Database, visit.Context.Visitor.LoginName, *id);
}

void RevokePostedSecretLink(Visit& visit) {
  if (const auto id = RowNumber(visit.Request.FormField("key")))
    RevokeSecretLink(visit.Database, visit.Context.Visitor.LoginName, *id);
}

}  // namespace orlune
