#include "month_page.h"

#include <stdexcept>
#include <utility>

#include "calendar_file.h"

namespace orlune::bench {
namespace {

int CountOf(std::string_view text, std::string_view sought) {
  int count = 0;
  for (std::size_t at = text.find(sought); at != std::string_view::npos; at = text.find(sought, at + 1))
    ++count;
  return count;
}

}  // namespace

MonthPage::MonthPage(const std::filesystem::path& databaseFile, const RegionalSettings& regional)
    : databaseFile_(databaseFile.string()),
      regional_(regional),
      clock_({kToday, std::chrono::hours{10}}),
      driver_(regional) {
  Answer(driver_, {{"p", "l"}}, {{"Name", std::string(kUser)}, {"Passwd", std::string(kPassword)}});
  const int shown = CountOf(Render(), kShownTitle);
  if (shown != kShownOccurrences)
    throw std::runtime_error("the page shows " + std::to_string(shown) + " occurrences");
}

std::vector<RecordedQuery> MonthPage::Queries() {
  QueryRecorder recorder(driver_);
  Answer(recorder, {}, {});
  return recorder.Queries();
}

const std::string& MonthPage::Answer(DatabaseDriver& databases, testing::FakeHost::Fields query,
                                     testing::FakeHost::Fields form) {
  const Surroundings surroundings{clock_, databases, regional_, languagePacks_};
  host_.StartRequest(std::move(query), std::move(form), {});
  Orlune page(surroundings);
  page.DBPath(databaseFile_);
  page.ShowTitle(true);
  page.OnStartPage(host_.Context());
  page.Execute();
  return host_.LastAnswer().Body;
}

}  // namespace orlune::bench
