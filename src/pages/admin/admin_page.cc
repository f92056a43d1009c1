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
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"
#include "store/transaction.h"

namespace orlune {
namespace {

using ManagerPointer = std::unique_ptr<const RecordManager>;

struct ManagerEntry {
  Markup Prefix;
  int ButtonText;
  Markup ButtonImage;
  ManagerPointer (*Create)();
};

/// In the order of the menu.
constexpr std::array<ManagerEntry, 4> kManagers{{
    {"um", 167, "admin_um.gif", []() -> ManagerPointer { return std::make_unique<UserManager>(); }},
    {"gm", 168, "admin_gm.gif", []() -> ManagerPointer { return std::make_unique<GroupManager>(); }},
    {"cm", 169, "admin_cm.gif",
     []() -> ManagerPointer { return std::make_unique<FileRecordManager>(kColourSchemes); }},
    {"tm", 170, "admin_tm.gif",
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

void ValidateName(ComponentState& state, std::string_view name) {
  if (name.empty()) {
    AddAlert(state, 851);
  } else if (name.find('"') != std::string_view::npos) {
    AddAlert(state, 852);
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
  AdminPage(ComponentState& state, const ManagerEntry& entry)
      : state_(state), entry_(entry), manager_(entry.Create()) {}

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

  ComponentState& state_;
  const ManagerEntry& entry_;
  ManagerPointer manager_;
  AdminState record_;
};

bool AdminPage::LoadRecord() {
  const std::string_view posted = state_.Context.Request->FormField("id");
  if (posted.empty()) return true;
  const auto key = KeyOf(posted);
  if (!key) return false;
  record_.Id = std::to_string(*key);
  return manager_->Load(state_, record_);
}

bool AdminPage::Store() {
  Transaction transaction(*state_.Database);
  if (!LoadRecord()) return true;
  manager_->ReadForm(state_, record_);
  state_.AlertText.clear();
  ValidateName(state_, record_.Name);
  manager_->Validate(state_, record_);
  if (!state_.AlertText.empty()) return false;

  record_.Name = ReplaceAll(record_.Name, "'", "&#39;");
  const auto mode = record_.Id.empty() ? SqlMode::kInsert : SqlMode::kUpdate;
  const auto columns = manager_->Columns(record_);
  state_.Database->Execute(BuildSql(mode, manager_->Kind().Table, columns, WhereThisRecord()));
  manager_->AfterSave(*state_.Database, record_);
  transaction.Commit();
  return true;
}

void AdminPage::Remove() {
  Transaction transaction(*state_.Database);
  if (!LoadRecord() || record_.Id.empty()) return;
  state_.Database->Execute(Statement("DELETE FROM {} {}", manager_->Kind().Table, WhereThisRecord()));
  manager_->AfterDelete(*state_.Database, record_.StoredIntName);
  transaction.Commit();
}

void AdminPage::ReturnToList() {
  state_.Context.Response->Redirect(state_.ScriptName + "?" + ActionQuery(entry_, "list").Text());
}

Html AdminPage::Menu() const {
  Html menu = PageButton(state_, "p=c", 163, "cal.gif");
  for (const ManagerEntry& other : kManagers) {
    if (&other == &entry_) continue;
    menu.Add(ImageLink(state_, Html("{}?{}", Attribute(state_.ScriptName), ActionQuery(other, "list")),
                       LoadText(state_, other.ButtonText), other.ButtonImage));
  }
  return menu;
}

Html AdminPage::RecordList() const {
  const RecordKind& kind = manager_->Kind();
  Html list("<SELECT NAME=\"id\" SIZE=5 onChange=\"javascript:document.acForm.submit();\">");
  list.Add("<OPTION VALUE=\"\">&lt;{}&gt;", Content(LoadText(state_, kind.NewEntry)));
  AddRecordOptions(list, *OpenQuery(*state_.Database, Statement("{}", kind.Records)),
                   [&](std::string_view id) { return id == record_.Id; });
  list.Add("</SELECT>");
  return TallRow(Html("{}", Content(LoadText(state_, kind.ListCaption))), list);
}

Html AdminPage::Buttons() const {
  Html buttons = ActionButton(state_, LoadText(state_, 790), ActionQuery(entry_, "save"));
  const bool mayDelete =
      !record_.Id.empty() && !IsProtected(record_.IntName) && !IsProtected(record_.StoredIntName);
  if (mayDelete) {
    buttons.Add("&nbsp;&nbsp;{}", ActionButton(state_, LoadText(state_, 791), ActionQuery(entry_, "delete")));
  }
  return buttons;
}

void AdminPage::Show() {
  Html page = PageHead(state_, state_.ProductTitle);
  page.Add(Menu());
  page.Add("<FORM METHOD=post ACTION=\"{}?{}\" NAME=\"acForm\">", Attribute(state_.ScriptName),
           ActionQuery(entry_, "list"));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(state_, manager_->Kind().Title))), {}));
  page.Add(
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%><TR><TD>"
      "<TABLE WIDTH=100% CELLSPACING=10 ALIGN=CENTER>\r\n",
      CellSpacing(state_));
  page.Add(RecordList());
  page.Add(manager_->FieldRows(state_, record_));
  page.Add("</TABLE></TD></TR><TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">");
  page.Add(Buttons());
  page.Add(TableClose());
  FinishFormPage(state_, std::move(page));
}

}  // namespace

void ShowAdminPage(ComponentState& state) {
  if (!IsAdministrator(state)) return state.Context.Response->Write(std::string(LoadText(state, 850)));

  const std::string_view act = state.Context.Request->QueryParameter("act");
  const ManagerEntry* known = FindManager(act.substr(0, 2));
  const std::string_view action = known && act.size() > 3 ? act.substr(3) : "";
  AdminPage page(state, known ? *known : kManagers.front());
  if (action == "save") {
    page.Save();
  } else if (action == "delete") {
    page.Delete();
  } else {
    page.ShowList();
  }
}

}  // namespace orlune
