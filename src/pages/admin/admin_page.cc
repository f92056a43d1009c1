#include "pages/admin/admin_page.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/text.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "pages/admin/field_rows.h"
#include "pages/admin/file_record_manager.h"
#include "pages/admin/group_manager.h"
#include "pages/admin/record_manager.h"
#include "pages/admin/user_manager.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/transaction.h"

namespace orlune {
namespace {

using ManagerPointer = std::unique_ptr<const RecordManager>;

struct ManagerEntry {
  Markup Prefix;
  Text ButtonText;
  Markup ButtonImage;
  ManagerPointer (*Create)();
};

/// In the order of the menu.
constexpr std::array<ManagerEntry, 4> kManagers{{
    {"um", Text::kUserManager, "admin_um.gif",
     []() -> ManagerPointer { return std::make_unique<UserManager>(); }},
    {"gm", Text::kGroupManager, "admin_gm.gif",
     []() -> ManagerPointer { return std::make_unique<GroupManager>(); }},
    {"cm", Text::kColourSchemeManager, "admin_cm.gif",
     []() -> ManagerPointer { return std::make_unique<FileRecordManager>(kColourSchemes); }},
    {"tm", Text::kEventTypeManager, "admin_tm.gif",
     []() -> ManagerPointer { return std::make_unique<FileRecordManager>(kEventTypes); }},
}};

const ManagerEntry* FindManager(std::string_view prefix) {
  const auto* entry = std::find_if(kManagers.begin(), kManagers.end(),
                                   [&](const ManagerEntry& known) { return known.Prefix.Text() == prefix; });
  return entry == kManagers.end() ? nullptr : entry;
}

/// Nothing when `text` is not a number.
std::optional<std::int64_t> KeyOf(std::string_view text) {
  std::int64_t key = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), key);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return key;
}

void ValidateName(Visit& visit, std::string_view name) {
  if (name.empty()) {
    AddAlert(visit, Text::kNameMissing);
  } else if (name.find('"') != std::string_view::npos) {
    AddAlert(visit, Text::kNameHasQuotes);
  }
}

bool IsProtected(std::string_view name) {
  return name == "admin" || name == "default" || name == "default.css";
}

Html ActionQuery(const ManagerEntry& manager, Markup action) {
  return Html("p=a&act={}_{}", manager.Prefix, action);
}

Html ListQuery(const ManagerEntry& manager) {
  return ActionQuery(manager, "list");
}

AdminContent LoadAdminContent(Connection& database, const RecordManager& manager, AdminState record) {
  AdminContent content{std::move(record), {}, {}};
  std::tie(content.Records, content.Choices) =
      Ask(database, manager.Records(), manager.Choices(content.Record));
  return content;
}

Html Menu(const PageContext& context, const ManagerEntry& shown) {
  Html menu = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  for (const ManagerEntry& other : kManagers) {
    if (&other == &shown) continue;
    menu.Add(ImageLink(context, Html("{}?{}", Attribute(context.Hosting.ScriptName), ListQuery(other)),
                       LoadText(context, other.ButtonText), other.ButtonImage));
  }
  return menu;
}

Html RecordList(const PageContext& context, const RecordTexts& texts, const AdminContent& content) {
  const std::string shown = content.Record.Id ? std::to_string(*content.Record.Id) : "";
  Html list("<SELECT NAME=\"id\" SIZE=5 onChange=\"javascript:document.acForm.submit();\">");
  list.Add("<OPTION VALUE=\"\">&lt;{}&gt;", Content(LoadText(context, texts.NewEntry)));
  AddRecordOptions(list, content.Records, [&](std::string_view id) { return id == shown; });
  list.Add("</SELECT>");
  return TallRow(Html("{}", Content(LoadText(context, texts.ListCaption))), list);
}

Html Buttons(const PageContext& context, const ManagerEntry& entry, const AdminState& record) {
  Html buttons = ActionButton(context, LoadText(context, Text::kSaveRecord), ActionQuery(entry, "save"));
  if (record.Id && !IsProtected(record.IntName) && !IsProtected(record.StoredIntName)) {
    buttons.Add("&nbsp;&nbsp;{}",
                ActionButton(context, LoadText(context, Text::kDeleteRecord), ActionQuery(entry, "delete")));
  }
  return buttons;
}

Html WriteAdminPage(const PageContext& context, const ManagerEntry& entry, const RecordManager& manager,
                    const AdminContent& content) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(Menu(context, entry));
  page.Add("<FORM METHOD=post ACTION=\"{}?{}\" NAME=\"acForm\">", Attribute(context.Hosting.ScriptName),
           ListQuery(entry));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(context, manager.Texts().Title))), {}));
  page.Add(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>\r\n",
      CellSpacing(context));
  page.Add(RecordList(context, manager.Texts(), content));
  page.Add(manager.FieldRows(context, content));
  page.Add("</TABLE></TD></TR><TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">");
  page.Add(Buttons(context, entry, content.Record));
  page.Add(TableClose());
  return page;
}

/// One request to one manager.
class AdminPage {
 public:
  AdminPage(Visit& visit, const ManagerEntry& entry)
      : visit_(visit), entry_(entry), manager_(entry.Create()) {}

  void ShowList() {
    if (!LoadRecord()) record_ = {};
    Show();
  }

  void Save() {
    if (Store() && record_.GeneratedPassword.empty()) {
      ReturnToList();
    } else {
      Show();
    }
  }

  void Delete() {
    Remove();
    ReturnToList();
  }

 private:
  void Show();
  /// Loads the record that the form names, if any; false when it does not exist.
  bool LoadRecord();
  /// False when the posted values are invalid. Does nothing for a record that does not exist any more.
  bool Store();
  void Remove();
  void ReturnToList();

  Visit& visit_;
  const ManagerEntry& entry_;
  ManagerPointer manager_;
  AdminState record_;
};

void AdminPage::Show() {
  const AdminContent content = LoadAdminContent(visit_.Database, *manager_, std::move(record_));
  FinishFormPage(visit_, WriteAdminPage(visit_.Context, entry_, *manager_, content));
}

bool AdminPage::LoadRecord() {
  const std::string_view posted = visit_.Request.FormField("id");
  if (posted.empty()) return true;
  record_.Id = KeyOf(posted);
  return record_.Id && manager_->Load(visit_.Database, record_);
}

bool AdminPage::Store() {
  Transaction transaction(visit_.Database);
  if (!LoadRecord()) return true;
  record_.StoredName = record_.Name;
  manager_->ReadForm(visit_, record_);
  visit_.Alerts.clear();
  ValidateName(visit_, record_.Name);
  manager_->Validate(visit_, record_);
  if (!visit_.Alerts.empty()) return false;

  record_.Name = ReplaceAll(record_.Name, "'", "&#39;");
  manager_->Save(visit_, record_);
  transaction.Commit();
  return true;
}

void AdminPage::Remove() {
  Transaction transaction(visit_.Database);
  if (!LoadRecord() || !record_.Id) return;
  if (visit_.Context.Hosting.Strict && IsProtected(record_.StoredIntName)) return;
  manager_->Delete(visit_.Database, record_);
  transaction.Commit();
}

void AdminPage::ReturnToList() {
  visit_.Response.Redirect(visit_.Context.Hosting.ScriptName + "?" + ListQuery(entry_).Text());
}

}  // namespace

void ShowAdminPage(Visit& visit) {
  if (!visit.Context.Visitor.IsAdministrator())
    return visit.Response.Write(std::string(LoadText(visit.Context, Text::kNoRights)));

  const std::string_view act = visit.Request.QueryParameter("act");
  const ManagerEntry* known = FindManager(act.substr(0, 2));
  const std::string_view action = known && act.size() > 3 ? act.substr(3) : "";
  AdminPage page(visit, known ? *known : kManagers.front());
  if (action == "save") {
    page.Save();
  } else if (action == "delete") {
    page.Delete();
  } else {
    page.ShowList();
  }
}

}  // namespace orlune
