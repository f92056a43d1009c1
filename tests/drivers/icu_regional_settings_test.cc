#include "drivers/icu/icu_regional_settings.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "base/dates.h"

namespace orlune {
namespace {

/// The names of March and Monday: standing alone, abbreviated, in the long date; in full, abbreviated.
std::string MarchAndMonday(const DateNames& names) {
  return names.Months[2] + ' ' + names.AbbreviatedMonths[2] + ' ' + names.LongDateMonths[2] + ' ' +
         names.Weekdays[1] + ' ' + names.AbbreviatedWeekdays[1];
}

TEST(IcuRegionalSettings, WriteDatesAsTheRegionDoes) {
  struct Case {
    const char* Region;
    const char* ShortDate;
    const char* LongDatePattern;
    const char* MarchAndMonday;
  };
  const Case cases[] = {
      {"en_US", "3/5/2004", "dddd, mmmm d, yyyy", "March Mar March Monday Mon"},
      {"en_GB", "05/03/2004", "dddd, d mmmm yyyy", "March Mar March Monday Mon"},
      {"fi_FI", "5.3.2004", "dddd d. mmmm yyyy", "maaliskuu maalis maaliskuuta maanantai ma"},
      {"sv_SE", "2004-03-05", "dddd d mmmm yyyy", "mars mars mars måndag mån"},
      {"de_DE", "05.03.2004", "dddd, d. mmmm yyyy", "März Mär März Montag Mo"},
      {"tr_TR", "5.03.2004", "d mmmm yyyy dddd", "Mart Mar Mart Pazartesi Pzt"},
      {"es_ES", "5/3/2004", "dddd, d' de 'mmmm' de 'yyyy", "marzo mar marzo lunes lun"},
      {"ja_JP", "2004/03/05", "yyyy年mmmm月d日dddd", "3月 3月 3 月曜日 月"},
      {"th_TH", "5/3/2004", "ddddที่ d mmmm yyyy", "มีนาคม มี.ค. มีนาคม วันจันทร์ จ."},
      {"ar_EG", "5/3/2004", "dddd، d mmmm yyyy", "مارس مارس مارس الاثنين الاثنين"},
  };
  for (const Case& expected : cases) {
    SCOPED_TRACE(expected.Region);
    const RegionalSettings settings = LoadRegionalSettings(expected.Region);
    EXPECT_EQ(settings.Region, expected.Region);
    EXPECT_EQ(FormatShortDate(settings, std::chrono::year{2004} / 3 / 5), expected.ShortDate);
    EXPECT_EQ(settings.Names.LongDatePattern, expected.LongDatePattern);
    EXPECT_EQ(MarchAndMonday(settings.Names), expected.MarchAndMonday);
  }
}

TEST(IcuRegionalSettings, UpperCaseFollowsTheRegionsRules) {
  EXPECT_EQ(LoadRegionalSettings("fi_FI").UpperCaseNames.LongDateMonths[2], "MAALISKUUTA");
  EXPECT_EQ(LoadRegionalSettings("sv_SE").UpperCaseNames.AbbreviatedWeekdays[1], "MÅN");
  EXPECT_EQ(LoadRegionalSettings("tr_TR").UpperCaseNames.Months[3], "NİSAN");
  EXPECT_EQ(LoadRegionalSettings("ksh_DE").Names.Months[7], "Oujoß");
  EXPECT_EQ(LoadRegionalSettings("ksh_DE").UpperCaseNames.Months[7], "OUJOSS");
  EXPECT_EQ(LoadRegionalSettings("es_ES").UpperCaseNames.LongDatePattern, "dddd, d' DE 'mmmm' DE 'yyyy");
}

TEST(IcuRegionalSettings, AcceptsOtherSpellingsOfARegion) {
  EXPECT_EQ(LoadRegionalSettings("en-GB").Region, "en_GB");
  EXPECT_EQ(LoadRegionalSettings("fi_FI.UTF-8").Region, "fi_FI");
  EXPECT_EQ(LoadRegionalSettings("th_TH@calendar=buddhist;numbers=thai").Names.LongDatePattern,
            LoadRegionalSettings("th_TH").Names.LongDatePattern);
}

TEST(IcuRegionalSettings, RefusesUnknownRegions) {
  for (const char* region : {"", "xx_YY", "en_ZZ", "klingon", "../en_US", "en US"}) {
    EXPECT_THROW(LoadRegionalSettings(region), std::invalid_argument) << region;
  }
}

}  // namespace
}  // namespace orlune
