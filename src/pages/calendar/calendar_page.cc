#include "pages/calendar/calendar_page.h"

#include "html/html.h"
#include "html/page_frame.h"
#include "pages/calendar/day_view.h"
#include "pages/calendar/month_view.h"
#include "pages/calendar/view_mode.h"
#include "pages/calendar/view_parts.h"
#include "pages/calendar/week_view.h"
#include "request/component_state.h"

namespace orlune {
namespace {

constexpr std::size_t kUsualPageSize = 65536;

void AddView(Html& page, const ComponentState& state) {
  const auto mode = ViewModeNamed(state.DisplayMode);
  if (mode == ViewMode::kDay) AddDayView(page, state);
  if (mode == ViewMode::kWeek) AddWeekView(page, state);
  if (mode == ViewMode::kMonth) AddMonthView(page, state);
}

}  // namespace

void ShowCalendarPage(ComponentState& state) {
  AnnounceViewParts(state);
  Html page;
  page.Reserve(kUsualPageSize);
  page.Add(PageHead(state, state.ProductTitle));
  AddView(page, state);
  page.Add(PageFoot(state));
  page.Add(AlertScript(state));
  WritePage(state, std::move(page));
}

}  // namespace orlune
