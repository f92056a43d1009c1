// make_calendar_file FILE EVENTS: writes the calendar of the benchmarks, unless the file exists.

#include <exception>
#include <iostream>
#include <string>

#include "calendar_file.h"
#include "drivers/icu/icu_regional_settings.h"

int main(int argc, char** argv) {
  try {
    if (argc != 3) throw std::invalid_argument("usage: make_calendar_file FILE EVENTS");
    orlune::bench::MakeCalendarFile(argv[1], std::stoi(argv[2]), orlune::LoadRegionalSettings("en_US"));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
