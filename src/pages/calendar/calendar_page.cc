#include "pages/calendar/calendar_page.h"

#include "html/html.h"
#include "html/page_frame.h"
#include "pages/calendar/day_view.h"
#include "pages/calendar/month_view.h"
#include "pages/calendar/view_mode.h"
#include "pages/calendar/view_parts.h"
#include "pages/calendar/week_view.h"
#include "request/visit.h"

namespace orlune {
namespace {

constexpr std::size_t kUsualPageSize = 65536;

void AddView(Html& page, const Visit& visit) {
  const auto mode = ViewModeNamed(visit.Context.Visitor.DisplayMode);
  if (mode == ViewMode::kDay) AddDayView(page, visit);
  if (mode == ViewMode::kWeek) AddWeekView(page, visit);
  if (mode == ViewMode::kMonth) AddMonthView(page, visit);
}

}  // namespace

void ShowCalendarPage(Visit& visit) {
  AnnounceViewParts(visit);
  Html page;
  page.Reserve(kUsualPageSize);
  page.Add(PageHead(visit, visit.Context.Hosting.ProductTitle));
  AddView(page, visit);
  page.Add(PageFoot(visit));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
