#include <regex>

#include "support/calendar_fixture.h"
#include "support/golden_page.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class EventSearch : public CalendarFixture {
 protected:
  EventSearch() {
    LogIn("anna", "secret");
    AddEvent("anna", "Lunch", "Type, BeginDate, BeginTime, EndTime, Comments",
             "'none', '3/20/2004', '12:00', '13:00', 'with Ben'");
    AddEvent("sales", "Fair", "Type, BeginDate, EndDate", "'day', '3/10/2004', '3/12/2004'");
    AddEvent("ben", "Dentist", "Type, BeginDate", "'none', '3/16/2004'");
    AddEvent("admin", "lunch of the boss", "Type, BeginDate, Private", "'none', '3/18/2004', yes");
    Run(Statement("UPDATE Calendars SET IsHidden = no WHERE Name = 'admin'"));
  }

  std::string Find(const FakeHost::Fields& criteria) { return Post("p=e&act=results", criteria).Body; }
  /// The titles of the hits, from 2004 on unless the criteria say otherwise.
  std::vector<std::string> Hits(FakeHost::Fields criteria) {
    static const std::regex kTitle("<TR><TD>(?:<A [^>]*>)?([^<]+)");
    criteria.emplace("date1", "1/1/2004");
    const std::string page = Find(criteria);
    std::vector<std::string> titles;
    for (std::sregex_iterator hit(page.begin(), page.end(), kTitle), end; hit != end; ++hit)
      titles.push_back((*hit)[1]);
    return titles;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(EventSearch, PassesOverWhatOthersKeepPrivateOnAStrictPage) {
  AddEvent("sales", "Team lunch", "Type, BeginDate, Private", "'none', '3/19/2004', yes");
  AddEvent("staff", "Secret lunch", "Type, BeginDate, Private", "'none', '3/19/2004', yes");
  EXPECT_EQ(Hits({{"search", "lunch"}}).size(), 4U);
  configure_ = [](Orlune& page) { page.Strict(true); };
  EXPECT_EQ(Hits({{"search", "lunch"}}), (Texts{"Team lunch", "Lunch"}));
  EXPECT_EQ(Hits({{"cal", "admin"}}), Texts{});
  configure_ = [](Orlune& page) {
    page.Strict(true);
    page.LoginName("");
  };
  Get("p=l");
  EXPECT_EQ(Hits({{"search", "lunch"}}), Texts{"Lunch"});
}

TEST_F(EventSearch, FindsWhatItsCriteriaName) {
  const struct {
    FakeHost::Fields Criteria;
    Texts Expected;
  } cases[] = {
      {{}, {"Fair", "Private (Administrator)", "Lunch"}},
      {{{"search", "LUNCH"}}, {"Private (Administrator)", "Lunch"}},
      {{{"search", "ith b"}}, {"Lunch"}},  // in the comments
      {{{"search", "') OR ('1'='1"}}, {}},
      {{{"date1", "3/12/2004"}, {"cal", "sales"}}, {"Fair"}},  // its last day
      {{{"date1", "3/13/2004"}, {"cal", "sales"}}, {}},
      {{{"reptype", "day"}}, {"Fair"}},
      {{{"type", "none"}, {"cal", "anna"}}, {"Lunch"}},  // the list of results posts the kind as "type"
      {{{"cal", "ben"}}, {"Dentist"}},                   // hidden, but named
      {{{"cal", "nobody"}}, {}},
  };
  for (const auto& c : cases) EXPECT_EQ(Hits(c.Criteria), c.Expected) << &c - cases;
  Run(Statement("UPDATE Calendars SET IsHidden = yes WHERE Name = 'anna'"));
  EXPECT_EQ(Hits({{"search", "LUNCH"}}), (Texts{"Private (Administrator)", "Lunch"}))
      << "one's own, though hidden";

  for (const char* state : {"undecided", "declined", "accepted", "-"}) {
    const int id = AddEvent("anna", state, "Type, BeginDate", "'none', '3/1/2005'");
    Run(Statement("UPDATE Events SET SuggestState = '{}' WHERE EventID = {}", state, id));
  }
  EXPECT_EQ(Hits({{"date1", "1/1/2005"}}), (Texts{"accepted", "-"}));
}

TEST_F(EventSearch, ShowsHitsWithTheirDays) {
  Run(Statement("UPDATE Events SET Type = 'month', EndDate = '3/21/2004' WHERE EventID = 3"));
  Run(Statement("UPDATE Calendars SET IsHidden = no WHERE Name = 'ben'"));
  EXPECT_TRUE(IsGoldenPage("events/hits", Find({{"date1", "3/1/2004"}})));
  EXPECT_TRUE(
      IsGoldenPage("events/no_hits", Find({{"date1", "3/1/2004"}, {"search", "\"%"}, {"cal", "sales"}})));
}

TEST_F(EventSearch, RequiresADate) {
  EXPECT_TRUE(IsGoldenPage("events/search", Get("p=e&act=find&cd=4/1/2004").Body));
  EXPECT_TRUE(IsGoldenPage(
      "events/search_again",
      Find({{"date1", "someday"}, {"search", "a \"b\""}, {"cal", "sales"}, {"reptype", "month"}})));
  EXPECT_EQ(AlertOf(Find({{"date1", ""}})), "The start date is not a valid date.\\n");
}

TEST_F(EventSearch, ShowsTheRestAfterADeletion) {
  FakeHost::Fields form{{"search", ""}, {"cal", ""}, {"type", ""}, {"date1", "1/1/2004"}};
  for (const char* ids : {"1, 2", ""}) {
    form["id"] = ids;
    const std::string page = Post("p=e&act=delete&ret=results", form).Body;
    EXPECT_NE(page.find("Private (Administrator)"), std::string::npos);
    EXPECT_EQ(page.find("Fair"), std::string::npos);
    EXPECT_EQ(Read(Statement("SELECT Count(EventID) AS n FROM Events")), "2");
  }
}

}  // namespace
}  // namespace orlune::testing
