#include "visitor.h"

#include <stdexcept>
#include <utility>

namespace orlune::bench {

Visitor::Visitor(DatabaseDriver& databases, std::string database, const RegionalSettings& regional,
                 std::string_view user)
    : databases_(databases),
      database_(std::move(database)),
      regional_(regional),
      clock_({kToday, std::chrono::hours{10}}) {
  Ask({{{"p", "l"}}, {{"Name", std::string(user)}, {"Passwd", std::string(kPassword)}}});
  if (host_.LastAnswer().RedirectedTo.empty()) throw std::runtime_error("the login was refused");
}

std::vector<RecordedStatement> Visitor::Statements(const PageRequest& request) {
  StatementRecorder recorder(databases_);
  Answer(recorder, request);
  return recorder.Statements();
}

const testing::Answer& Visitor::Answer(DatabaseDriver& databases, PageRequest request) {
  const Surroundings surroundings{clock_,         databases,  regional_, languages_,
                                  languagePacks_, passwords_, logins_};
  host_.StartRequest(std::move(request.Query), std::move(request.Form), {});
  Orlune page(surroundings);
  page.DBPath(database_);
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
