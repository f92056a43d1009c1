#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

using DatePicker = CalendarFixture;

TEST_F(DatePicker, OffersAMonthInSixWeeks) {
  LogIn("anna", "secret");
  EXPECT_TRUE(IsGoldenPage("calendar/date_picker", Get("p=s&sd=2004-02-10").Body));
  const std::string today = "<TD ALIGN=CENTER CLASS=\"today\"><A HREF=";
  EXPECT_NE(Get("p=s&sd=3/1/2004").Body.find(today), std::string::npos);
  const std::string refused = Get("p=s&sd=2/30/2004").Body;
  EXPECT_NE(refused.find(today), std::string::npos);
  EXPECT_EQ(AlertOf(refused), "2/30/2004 is not a valid date.\\n");
  EXPECT_NE(Get("p=s&sd=12/31/9999").Body.find("date1.value='12/31/9999'"), std::string::npos);
  EXPECT_NE(Get("p=s&sd=1/1/0100").Body.find("sd=1/1/0100\""), std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
