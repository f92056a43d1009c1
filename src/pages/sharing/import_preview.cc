#include "pages/sharing/import_preview.h"

#include <algorithm>
#include <string>

#include "base/dates.h"
#include "base/text.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "pages/sharing/repetition_words.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {
namespace {

Html Word(const PageContext& context, Text text) {
  return Html("{}", Content(LoadText(context, text)));
}

Text WordOf(ImportStep step) {
  switch (step) {
    case ImportStep::kAdd:
      return Text::kImportNew;
    case ImportStep::kChange:
      return Text::kImportChanged;
    case ImportStep::kNothing:
      return Text::kImportUnchanged;
  }
  return Text::kImportNew;
}

Text WordOf(Loss loss) {
  switch (loss) {
    case Loss::kAlarms:
      return Text::kLossAlarms;
    case Loss::kAttendees:
      return Text::kLossAttendees;
    case Loss::kLocation:
      return Text::kLossLocation;
    case Loss::kLongText:
      return Text::kLossLongText;
    case Loss::kListedDays:
      return Text::kLossListedDays;
    case Loss::kUnknownZone:
      return Text::kLossUnknownZone;
    case Loss::kOther:
      return Text::kLossOther;
  }
  return Text::kLossOther;
}

Html Losses(const PageContext& context, const std::vector<Loss>& losses) {
  Html words;
  for (const Loss loss : losses)
    words.Add("{}{}", words.IsEmpty() ? Markup("") : Markup(", "), Word(context, WordOf(loss)));
  return words;
}

Html Cell(const PageContext& context, Text label, const Html& value) {
  return Html("<TD DATA-LABEL=\"{}\">{}</TD>", Attribute(LoadText(context, label)), value);
}

Html Repetition(const PageContext& context, const std::vector<ObjectEvent>& events) {
  Html words = RepetitionWords(context, events.front().Event);
  if (events.size() > 1)
    words.Add(" ({})", Content(LoadText(context, Text::kSeveralEntries, {std::to_string(events.size())})));
  return words;
}

Html RefusedRow(const PageContext& context, const RefusedComponent& refused) {
  const std::string_view untitled = LoadText(context, Text::kUntitledEvent);
  return Html("<TR><TD>{}</TD><TD></TD><TD></TD>{}<TD></TD></TR>\r\n",
              Typed(refused.Title.empty() ? untitled : std::string_view(refused.Title)),
              Cell(context, Text::kImportResult,
                   Html("<B>{}</B>: {}", Word(context, Text::kImportRefused), Typed(refused.Sentence))));
}

Html ObjectRow(const PageContext& context, const ImportedObject& object) {
  const std::vector<ObjectEvent>& events = object.Planned.Events;
  if (events.empty()) return {};
  const OL_Event& event = events.front().Event;
  Html row("<TR><TD>{}</TD>", OptionLabel(event.EventName));
  row.Add(Cell(context, Text::kFirstDay,
               Html("{}", Content(FormatShortDate(context.Regional, event.BeginDate)))));
  row.Add(Cell(context, Text::kRepeats, Repetition(context, events)));
  row.Add(Cell(context, Text::kImportResult, Word(context, WordOf(object.Step))));
  if (object.Planned.Losses.empty()) return row.Add("<TD></TD></TR>\r\n");
  row.Add(Cell(context, Text::kNotShown, Losses(context, object.Planned.Losses)));
  return row.Add("</TR>\r\n");
}

Html HeadRow(const PageContext& context) {
  Html row("<TR>");
  for (const Text label :
       {Text::kFoundTitle, Text::kFirstDay, Text::kRepeats, Text::kImportResult, Text::kNotShown})
    row.Add("<TH SCOPE=col>{}</TH>", Word(context, label));
  return row.Add("</TR>\r\n");
}

/// What is refused comes first.
Html EventTable(const PageContext& context, const ImportPlan& plan) {
  Html table("<TABLE CLASS=\"list\"><CAPTION>{}</CAPTION>\r\n{}", Word(context, Text::kFileEvents),
             HeadRow(context));
  const std::size_t refused = std::min(plan.Refused.size(), kMostPreviewRows);
  for (std::size_t row = 0; row < refused; ++row) table.Add(RefusedRow(context, plan.Refused[row]));
  const std::size_t objects = std::min(plan.Objects.size(), kMostPreviewRows - refused);
  for (std::size_t row = 0; row < objects; ++row) table.Add(ObjectRow(context, plan.Objects[row]));
  return table.Add("</TABLE>\r\n");
}

Html Sums(const PageContext& context, const ImportPlan& plan) {
  const ImportSums sums = SumsOf(plan);
  Html line("<P><B>{}</B>",
            Content(LoadText(context, Text::kImportSums,
                             {std::to_string(sums.New), std::to_string(sums.Changed),
                              std::to_string(sums.Unchanged), std::to_string(plan.Refused.size())})));
  if (plan.Objects.size() + plan.Refused.size() > kMostPreviewRows)
    line.Add(" {}", Content(LoadText(context, Text::kFirstRows, {std::to_string(kMostPreviewRows)})));
  return line.Add("</P>\r\n");
}

/// Browsers post line ends of a text area as CR and LF, and drop one at its beginning.
Html HiddenText(std::string_view text) {
  return Html("<TEXTAREA NAME=\"text\" HIDDEN>{}{}</TEXTAREA>",
              text.starts_with('\r') ? Markup("\r\n") : Markup(""), Typed(text));
}

Html Buttons(const PageContext& context, const SharedCalendar& calendar, const ImportSums& sums,
             std::string_view text) {
  Html form("<FORM METHOD=post ENCTYPE=\"multipart/form-data\" ACTION=\"{}\">",
            SharingLink(context, "?act=import"));
  if (sums.New + sums.Changed > 0) {
    form.Add(HiddenField("calendar", WithReferencesShown(calendar.Name)));
    form.Add(HiddenText(text));
    form.Add("<INPUT TYPE=submit VALUE=\"{}\">\r\n", Attribute(LoadText(context, Text::kImport)));
  }
  return form.Add("<A HREF=\"{}\">{}</A></FORM>\r\n", SharingLink(context),
                  Word(context, Text::kCancelImport));
}

}  // namespace

ImportSums SumsOf(const ImportPlan& plan) {
  ImportSums sums;
  for (const ImportedObject& object : plan.Objects) {
    if (object.Step == ImportStep::kAdd) ++sums.New;
    if (object.Step == ImportStep::kChange) ++sums.Changed;
    if (object.Step == ImportStep::kNothing) ++sums.Unchanged;
  }
  return sums;
}

Html WriteImportPreview(const PageContext& context, const SharedCalendar& calendar, const ImportPlan& plan,
                        std::string_view text) {
  Html page = SharingFrameOpen(context, "90");
  page.Add(
      SectionOpen(Html("{}", OptionLabel(LoadText(context, Text::kImportInto, {calendar.FriendlyName})))));
  page.Add(Sums(context, plan));
  page.Add(EventTable(context, plan));
  page.Add(Buttons(context, calendar, SumsOf(plan), text));
  page.Add(SectionClose());
  return page.Add(SharingFrameClose(context));
}

}  // namespace orlune
