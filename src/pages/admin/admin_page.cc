#include "pages/admin/admin_page.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

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

/// `text` as the key of a record, if it can be one.
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

/// One manager in one request.
class AdminPage {
 public:
  AdminPage(Visit& visit, const ManagerEntry& entry)
      : visit_(visit), entry_(entry), manager_(entry.Create()) {}

  void ShowList() {
    if (!LoadRecord()) record_ = {};
    Show();
  }

  void Save() {
    if (Store()) {
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
  Html Menu() const;
  Html RecordList() const;
  Html Buttons() const;

  /// Reads the record that the form names, if it names one; false when there is none such.
  bool LoadRecord();
  /// False when the posted values were refused. A record that is gone is left so.
  bool Store();
  void Remove();
  void ReturnToList();

  Statement WhereThisRecord() const { return Statement("WHERE ({} = {})", manager_->Kind().Key, record_.Id); }

  Visit& visit_;
  const ManagerEntry& entry_;
  ManagerPointer manager_;
  AdminState record_;
};

bool AdminPage::LoadRecord() {
  const std::string_view posted = visit_.Request.FormField("id");
  if (posted.empty()) return true;
  const auto key = KeyOf(posted);
  if (!key) return false;
  record_.Id = std::to_string(*key);
  return manager_->Load(visit_, record_);
}

bool AdminPage::Store() {
  Transaction transaction(visit_.Database);
  if (!LoadRecord()) return true;
  manager_->ReadForm(visit_, record_);
  visit_.Alerts.clear();
  ValidateName(visit_, record_.Name);
  manager_->Validate(visit_, record_);
  if (!visit_.Alerts.empty()) return false;

  record_.Name = ReplaceAll(record_.Name, "'", "&#39;");
  const auto mode = record_.Id.empty() ? SqlMode::kInsert : SqlMode::kUpdate;
  const auto columns = manager_->Columns(record_);
  visit_.Database.Execute(BuildSql(mode, manager_->Kind().Table, columns, WhereThisRecord()));
  manager_->AfterSave(visit_.Database, record_);
  transaction.Commit();
  return true;
}

void AdminPage::Remove() {
  Transaction transaction(visit_.Database);
  if (!LoadRecord() || record_.Id.empty()) return;
  visit_.Database.Execute(Statement("DELETE FROM {} {}", manager_->Kind().Table, WhereThisRecord()));
  manager_->AfterDelete(visit_.Database, record_.StoredIntName);
  transaction.Commit();
}

void AdminPage::ReturnToList() {
  visit_.Response.Redirect(visit_.Context.Hosting.ScriptName + "?" + ActionQuery(entry_, "list").Text());
}

Html AdminPage::Menu() const {
  Html menu = PageButton(visit_, "p=c", Text::kViewCalendar, "cal.gif");
  for (const ManagerEntry& other : kManagers) {
    if (&other == &entry_) continue;
    menu.Add(ImageLink(
        visit_, Html("{}?{}", Attribute(visit_.Context.Hosting.ScriptName), ActionQuery(other, "list")),
        LoadText(visit_, other.ButtonText), other.ButtonImage));
  }
  return menu;
}

Html AdminPage::RecordList() const {
  const RecordKind& kind = manager_->Kind();
  Html list("<SELECT NAME=\"id\" SIZE=5 onChange=\"javascript:document.acForm.submit();\">");
  list.Add("<OPTION VALUE=\"\">&lt;{}&gt;", Content(LoadText(visit_, kind.NewEntry)));
  AddRecordOptions(list, *OpenQuery(visit_.Database, Statement("{}", kind.Records)),
                   [&](std::string_view id) { return id == record_.Id; });
  list.Add("</SELECT>");
  return TallRow(Html("{}", Content(LoadText(visit_, kind.ListCaption))), list);
}

Html AdminPage::Buttons() const {
  Html buttons = ActionButton(visit_, LoadText(visit_, Text::kSaveRecord), ActionQuery(entry_, "save"));
  const bool mayDelete =
      !record_.Id.empty() && !IsProtected(record_.IntName) && !IsProtected(record_.StoredIntName);
  if (mayDelete) {
    buttons.Add("&nbsp;&nbsp;{}",
                ActionButton(visit_, LoadText(visit_, Text::kDeleteRecord), ActionQuery(entry_, "delete")));
  }
  return buttons;
}

void AdminPage::Show() {
  Html page = PageHead(visit_, visit_.Context.Hosting.ProductTitle);
  page.Add(Menu());
  page.Add("<FORM METHOD=post ACTION=\"{}?{}\" NAME=\"acForm\">",
           Attribute(visit_.Context.Hosting.ScriptName), ActionQuery(entry_, "list"));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(visit_, manager_->Kind().Title))), {}));
  page.Add(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>\r\n",
      CellSpacing(visit_));
  page.Add(RecordList());
  page.Add(manager_->FieldRows(visit_, record_));
  page.Add("</TABLE></TD></TR><TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">");
  page.Add(Buttons());
  page.Add(TableClose());
  FinishFormPage(visit_, std::move(page));
}

}  // namespace

void ShowAdminPage(Visit& visit) {
  if (!visit.Context.Visitor.IsAdministrator())
    return visit.Response.Write(std::string(LoadText(visit, Text::kNoRights)));

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
