#include "pages/calendar/calendar_page.h"

#include "html/html.h"
#include "html/page_frame.h"
#include "pages/calendar/day_view.h"
#include "pages/calendar/month_view.h"
#include "pages/calendar/view_content.h"
#include "pages/calendar/week_view.h"
#include "request/visit.h"

namespace orlune {
namespace {

constexpr std::size_t kUsualPageSize = 65536;

void AddView(Html& page, const PageContext& context, ViewMode mode, const ViewContent& content) {
  switch (mode) {
    case ViewMode::kDay:
      return AddDayView(page, context, content);
    case ViewMode::kWeek:
      return AddWeekView(page, context, content);
    case ViewMode::kMonth:
      return AddMonthView(page, context, content);
  }
}

}  // namespace

void ShowCalendarPage(Visit& visit) {
  const PageContext& context = visit.Context;
  Html page;
  page.Reserve(kUsualPageSize);
  page.Add(PageHead(context, context.Hosting.ProductTitle));
  if (const auto mode = ViewModeNamed(context.Visitor.DisplayMode))
    AddView(page, context, *mode, LoadView(visit.Database, context, *mode));
  page.Add(PageFoot(context));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
