#include "pages/sharing/event_import.h"

#include <optional>
#include <string>
#include <string_view>

#include "base/utf8.h"
#include "html/page_frame.h"
#include "pages/sharing/import_preview.h"
#include "pages/sharing/tools_of_visit.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

/// `text` with CR and LF at the end of each line.
std::string WithUniformLineEnds(std::string_view text) {
  std::string uniform;
  uniform.reserve(text.size() + text.size() / 32);
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    uniform += text.substr(0, end);
    if (end == std::string_view::npos) break;
    uniform += "\r\n";
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
  }
  return uniform;
}

/// The text of the file as a form carries it from the preview to the import, so that both read the same.
std::string PostableText(std::string_view file) {
  return WithUniformLineEnds(RepairUtf8(std::string(file)));
}

/// Nothing, with an alert, when there is nothing to import.
std::optional<ImportPlan> PlanOf(Visit& visit, const SharedCalendar& calendar, std::string_view text) {
  const auto refuse = [&](Text reason, std::initializer_list<std::string_view> arguments = {}) {
    AddAlert(visit, reason, arguments);
    return std::nullopt;
  };
  if (text.empty()) return refuse(Text::kFileMissing);
  if (text.size() > kMostFileBytes)
    return refuse(Text::kFileTooLarge, {std::to_string(kMostFileBytes >> 20U)});
  try {
    ImportPlan plan = PlanImport(visit.Database, ExchangeToolsOf(visit), calendar, text);
    if (plan.Objects.empty() && plan.Refused.empty()) return refuse(Text::kNoEventsInFile);
    return plan;
  } catch (const InvalidCalendarText& error) {
    return refuse(Text::kFileNotRead, {error.what()});
  }
}

std::string QueryOf(const ImportSums& sums) {
  return "?new=" + std::to_string(sums.New) + "&changed=" + std::to_string(sums.Changed) +
         "&unchanged=" + std::to_string(sums.Unchanged);
}

}  // namespace

bool ShowImportPreview(Visit& visit, const SharedCalendar& calendar) {
  const std::string text = PostableText(visit.Request.FormField("file"));
  const auto plan = PlanOf(visit, calendar, text);
  if (plan) WritePage(visit, WriteImportPreview(visit.Context, calendar, *plan, text));
  return plan.has_value();
}

bool ImportPosted(Visit& visit, const SharedCalendar& calendar) {
  const std::string text = PostableText(visit.Request.FormField("text"));
  const auto plan = PlanOf(visit, calendar, text);
  if (!plan) return false;
  RunImport(visit.Database, ExchangeToolsOf(visit), calendar, *plan);
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "/sharing" + QueryOf(SumsOf(*plan)));
  return true;
}

}  // namespace orlune
