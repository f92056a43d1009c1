#include "views/calendar_page.h"

#include "component/component_state.h"
#include "frame/html.h"
#include "frame/page_frame.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/view_mode.h"
#include "views/view_parts.h"
#include "views/week_view.h"

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
