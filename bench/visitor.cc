#include "visitor.h"

#include <utility>

#include "calendar_file.h"

namespace orlune::bench {

Visitor::Visitor(const std::filesystem::path& databaseFile, const RegionalSettings& regional)
    : databaseFile_(databaseFile.string()),
      regional_(regional),
      clock_({kToday, std::chrono::hours{10}}),
      driver_(regional) {
  Ask({{{"p", "l"}}, {{"Name", std::string(kUser)}, {"Passwd", std::string(kPassword)}}});
}

std::vector<RecordedStatement> Visitor::Statements(const PageRequest& request) {
  StatementRecorder recorder(driver_);
  Answer(recorder, request);
  return recorder.Statements();
}

const testing::Answer& Visitor::Answer(DatabaseDriver& databases, PageRequest request) {
  const Surroundings surroundings{clock_, databases, regional_, languagePacks_};
  host_.StartRequest(std::move(request.Query), std::move(request.Form), {});
  Orlune page(surroundings);
  page.DBPath(databaseFile_);
  page.ShowTitle(true);
  page.OnStartPage(host_.Context());
  page.Execute();
  return host_.LastAnswer();
}

int CountOf(std::string_view text, std::string_view sought) {
  int count = 0;
  for (std::size_t at = text.find(sought); at != std::string_view::npos; at = text.find(sought, at + 1))
    ++count;
  return count;
}

}  // namespace orlune::bench
