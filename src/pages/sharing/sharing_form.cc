#include "pages/sharing/sharing_form.h"

#include <functional>
#include <string_view>

#include "base/dates.h"
#include "base/text.h"
#include "exchange/file_import.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {
namespace {

Html Label(const PageContext& context, Text text) {
  return Html("{}", Content(LoadText(context, text)));
}

Html SubmitButton(const PageContext& context, Text label) {
  return Html("<INPUT TYPE=submit VALUE=\"{}\">", Attribute(LoadText(context, label)));
}

Html TextField(const PageContext& context, Text label, Markup name, std::string_view typed) {
  return Html(
      "<SPAN><LABEL FOR=\"{}\">{}</LABEL> <INPUT TYPE=text ID=\"{}\" NAME=\"{}\" VALUE=\"{}\"></SPAN>\r\n",
      name, Label(context, label), name, name, Attribute(WithReferencesShown(typed)));
}

Html CalendarList(const PageContext& context, Markup id, const Participant& user,
                  const std::function<bool(const SharedCalendar&)>& isOffered) {
  Html list("<SPAN><LABEL FOR=\"{}\">{}</LABEL> <SELECT ID=\"{}\" NAME=\"calendar\">", id,
            Label(context, Text::kEventCalendar), id);
  for (const SharedCalendar& calendar : user.Calendars) {
    if (isOffered(calendar))
      list.Add("<OPTION VALUE=\"{}\">{}", Attribute(WithReferencesShown(calendar.Name)),
               CalendarLabel(calendar));
  }
  return list.Add("</SELECT></SPAN>\r\n");
}

Html Fact(const PageContext& context, Text label, const Html& value) {
  return Html("<DT>{}</DT><DD>{}</DD>\r\n", Label(context, label), value);
}

Html Address(std::string_view address) {
  return Html("<SPAN CLASS=\"secret\">{}</SPAN>", Typed(address));
}

Html AccountFacts(const PageContext& context, const SharingContent& content, const Html& password) {
  return Html("<DL>\r\n{}{}{}</DL>\r\n",
              Fact(context, Text::kServerAddress, Address(content.Address.ForDevices())),
              Fact(context, Text::kDeviceUserName, Address(content.User.LoginName)),
              Fact(context, Text::kLoginPassword, password));
}

Html NewKeyNote(const PageContext& context, const SharingContent& content) {
  const NewKey& key = *content.Made;
  const Text introduction = key.IsLink ? Text::kNewSecretLink : Text::kNewAppPassword;
  Html note("<DIV CLASS=\"made\" ROLE=status><P>{}</P>\r\n",
            Typed(LoadText(context, introduction, {key.Name})));
  if (!key.IsLink) return note.Add("{}</DIV>\r\n", AccountFacts(context, content, Address(key.Secret)));
  note.Add("<P>{}</P>\r\n", Address(content.Address.OfFeed(key.Secret)));
  if (const std::string program = content.Address.OfFeedInProgram(key.Secret); !program.empty())
    note.Add("<P><A HREF=\"{}\">{}</A></P>\r\n", Attribute(program), Label(context, Text::kOpenSecretLink));
  return note.Add("</DIV>\r\n");
}

Html ImportNote(const PageContext& context, const ImportSums& sums) {
  return Html("<DIV CLASS=\"made\" ROLE=status><P>{}</P></DIV>\r\n",
              Content(LoadText(
                  context, Text::kImported,
                  {std::to_string(sums.New), std::to_string(sums.Changed), std::to_string(sums.Unchanged)})));
}

/// What differs between app passwords and secret links.
struct KeyKind {
  Text Caption;
  Markup RevokingQuery;
  bool HasCalendars;
};
constexpr KeyKind kAppPasswordKind{Text::kAppPasswords, "?act=rmpw", false};
constexpr KeyKind kSecretLinkKind{Text::kSecretLinks, "?act=rmlink", true};

Html HeadCell(const PageContext& context, Text label) {
  return Html("<TH SCOPE=col>{}</TH>", Label(context, label));
}

/// A narrow window shows the label beside the value, as it has no room for a row of captions.
Html DetailCell(const PageContext& context, Text label, const Html& value) {
  return Html("<TD DATA-LABEL=\"{}\">{}</TD>", Attribute(LoadText(context, label)), value);
}

Html CalendarOfKey(const Participant& user, const AccessKey& key) {
  const SharedCalendar* calendar = user.Find(key.Calendar);
  return calendar != nullptr ? CalendarLabel(*calendar) : Typed(key.Calendar);
}

Html LastUse(const PageContext& context, const AccessKey& key) {
  if (!key.LastUsed) return Label(context, Text::kKeyNeverUsed);
  return Html("{}", Content(FormatShortDate(context.Regional, *key.LastUsed)));
}

Html RevokeButton(const PageContext& context, const KeyKind& kind, const AccessKey& key) {
  const std::string_view label = LoadText(context, Text::kRevokeKey);
  return Html(
      "<FORM METHOD=post ACTION=\"{}\"><INPUT TYPE=hidden NAME=\"key\" VALUE=\"{}\">"
      "<BUTTON TYPE=submit ARIA-LABEL=\"{} {}\">{}</BUTTON></FORM>",
      SharingLink(context, kind.RevokingQuery), key.Id, Attribute(label),
      Attribute(WithReferencesShown(key.Label)), Content(label));
}

Html KeyRow(const PageContext& context, const Participant& user, const KeyKind& kind, const AccessKey& key) {
  Html row("<TR><TD>{}</TD>", Typed(key.Label));
  if (kind.HasCalendars) row.Add(DetailCell(context, Text::kKeyCalendar, CalendarOfKey(user, key)));
  row.Add(DetailCell(context, Text::kKeyMade,
                     Html("{}", Content(FormatShortDate(context.Regional, key.Created)))));
  row.Add(DetailCell(context, Text::kKeyLastUsed, LastUse(context, key)));
  return row.Add("<TD>{}</TD></TR>\r\n", RevokeButton(context, kind, key));
}

Html KeyTable(const PageContext& context, const Participant& user, const KeyKind& kind,
              const std::vector<AccessKey>& keys) {
  if (keys.empty())
    return Html("<P>{}: {}</P>\r\n", Label(context, kind.Caption), Label(context, Text::kNoKeys));
  Html table("<TABLE CLASS=\"list\"><CAPTION>{}</CAPTION>\r\n<TR>{}", Label(context, kind.Caption),
             HeadCell(context, Text::kKeyName));
  if (kind.HasCalendars) table.Add(HeadCell(context, Text::kKeyCalendar));
  table.Add("{}{}<TD></TD></TR>\r\n", HeadCell(context, Text::kKeyMade),
            HeadCell(context, Text::kKeyLastUsed));
  for (const AccessKey& key : keys) table.Add(KeyRow(context, user, kind, key));
  return table.Add("</TABLE>\r\n");
}

Html SharedAccountNote(const PageContext& context) {
  return Html("<P>{}</P>\r\n", Label(context, Text::kSharedAccount));
}

void AddDeviceSection(Html& page, const PageContext& context, const SharingContent& content) {
  page.Add(SectionOpen(Label(context, Text::kConnectDevice)));
  page.Add("<P>{}</P>\r\n", Label(context, Text::kConnectIntroduction));
  page.Add(AccountFacts(context, content, Label(context, Text::kAppPasswordHint)));
  if (!content.IsSafe) page.Add("<P CLASS=\"warning\">{}</P>\r\n", Label(context, Text::kNeedsHttps));
  if (!content.HasKeys) return void(page.Add(SharedAccountNote(context)).Add(SectionClose()));
  page.Add(KeyTable(context, content.User, kAppPasswordKind, content.AppPasswords));
  page.Add("<FORM METHOD=post ACTION=\"{}\">{}{}</FORM>\r\n", SharingLink(context, "?act=mkpw"),
           TextField(context, Text::kDeviceName, "device", content.Typed.Device),
           SubmitButton(context, Text::kMakeAppPassword));
  page.Add(SectionClose());
}

void AddSubscriptionSection(Html& page, const PageContext& context, const SharingContent& content) {
  page.Add(SectionOpen(Label(context, Text::kSubscribe)));
  page.Add("<P>{}</P>\r\n", Label(context, Text::kSubscribeIntroduction));
  if (!content.HasKeys) return void(page.Add(SharedAccountNote(context)).Add(SectionClose()));
  page.Add(KeyTable(context, content.User, kSecretLinkKind, content.SecretLinks));
  page.Add("<FORM METHOD=post ACTION=\"{}\">{}{}{}</FORM>\r\n", SharingLink(context, "?act=mklink"),
           CalendarList(context, "linked", content.User, [](const SharedCalendar&) { return true; }),
           TextField(context, Text::kLinkName, "link", content.Typed.Link),
           SubmitButton(context, Text::kMakeSecretLink));
  page.Add(SectionClose());
}

void AddImportSection(Html& page, const PageContext& context, const SharingContent& content) {
  page.Add(SectionOpen(Label(context, Text::kImport)));
  page.Add("<P>{}</P>\r\n",
           Content(LoadText(context, Text::kImportIntroduction, {std::to_string(kMostFileBytes >> 20U)})));
  page.Add("<FORM METHOD=post ENCTYPE=\"multipart/form-data\" ACTION=\"{}\">",
           SharingLink(context, "?act=preview"));
  page.Add(CalendarList(context, "target", content.User,
                        [](const SharedCalendar& calendar) { return calendar.MayChange; }));
  page.Add(
      "<SPAN><LABEL FOR=\"file\">{}</LABEL> "
      "<INPUT TYPE=file ID=\"file\" NAME=\"file\" ACCEPT=\".ics,text/calendar\"></SPAN>\r\n",
      Label(context, Text::kImportFile));
  page.Add("{}</FORM>\r\n", SubmitButton(context, Text::kPreviewImport));
  page.Add(SectionClose());
}

void AddExportSection(Html& page, const PageContext& context, const SharingContent& content) {
  page.Add(SectionOpen(Label(context, Text::kExport)));
  page.Add("<P>{}</P>\r\n", Label(context, Text::kExportIntroduction));
  page.Add("<FORM METHOD=get ACTION=\"{}\">{}", SharingLink(context), HiddenField("act", "export"));
  page.Add(CalendarList(context, "source", content.User, [](const SharedCalendar&) { return true; }));
  page.Add(TextField(context, Text::kExportFrom, "date1", content.Typed.FirstDay));
  page.Add(TextField(context, Text::kExportTo, "date2", content.Typed.LastDay));
  page.Add("{}</FORM>\r\n", SubmitButton(context, Text::kDownload));
  page.Add(SectionClose());
}

Html ToolBar(const PageContext& context) {
  Html bar = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  return bar.Add(PageButton(context, "p=p", Text::kEditPreferences, "prefs.gif"));
}

}  // namespace

Html WriteSharingForm(const PageContext& context, const SharingContent& content) {
  Html page = SharingFrameOpen(context, "70");
  if (content.Made) page.Add("<TR><TD CLASS=\"sharing\">{}</TD></TR>\r\n", NewKeyNote(context, content));
  if (content.Imported)
    page.Add("<TR><TD CLASS=\"sharing\">{}</TD></TR>\r\n", ImportNote(context, *content.Imported));
  AddDeviceSection(page, context, content);
  AddSubscriptionSection(page, context, content);
  AddImportSection(page, context, content);
  AddExportSection(page, context, content);
  return page.Add(SharingFrameClose(context));
}

Html SharingFrameOpen(const PageContext& context, Markup width) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add("<LINK REL=stylesheet HREF=\"{}sharing.css\" TYPE=text/css>\r\n",
           Attribute(context.Hosting.CssDir));
  page.Add(TitleBarOpen(width, Label(context, Text::kSharingTitle), ToolBar(context)));
  return page.Add("<TABLE WIDTH=100%>\r\n");
}

Html SharingFrameClose(const PageContext& context) {
  return Html("</TABLE>\r\n{}{}", TitleBarClose(context), PageFoot(context));
}

Html SectionOpen(const Html& heading) {
  return Html("<TR><TD CLASS=\"sharing\"><H2>{}</H2>\r\n", heading);
}

Html SectionClose() {
  return Html("</TD></TR>\r\n");
}

}  // namespace orlune
