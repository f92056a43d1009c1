#include "demo/demo_company_activities.h"

#include <array>

namespace orlune::demo {
namespace {

// clang-format off
constexpr std::array kEngineering = std::to_array<Activity>({
    {"Design review: probe housing", "Meeting", 90, "Drawings are on the shared drive, folder 'housing/rev C'.\r\nPlease read them before we meet."},
    {"Calibration run in lab 2", "", 120, "Book the climate chamber as well."},
    {"Pair up with {colleague}", "", 90},
    {"Firmware code review", "Meeting", 60},
    {"Look into drifting pH readings", "", 120, "{client} reports 0.3 pH drift after about 40 hours.\r\nLogs are attached to the ticket."},
    {"Freeze the radio protocol", "Deadline", 0},
    {"Interview: embedded developer", "Meeting", 60, "Candidate comes by train, please be on time.\r\nRoom: Birch."},
    {"Try the new oscilloscope", "", 45},
    {"Field test at {client}", "Travel", 240, "Waders, spare batteries, the yellow case.", false, "09:00"},
    {"Supplier call: circuit boards", "Phone Call", 30, "Ask about lead times for the \"long life\" connectors."},
    {"Write test report for {client}", "Deadline", 0},
    {"Drop test, third prototype", "", 60},
    {"Lunch & learn: reading datasheets", "Training", 60, "Bring your own sandwich.", false, "12:00"},
    {"Clean up the build server", "", 60},
    {"Data sheet corrections due", "Deadline", 0},
    {"Talk through sensor fusion with {colleague}", "Meeting", 45},
    {"EMC pre-check", "", 180, "Test house opens at 9, ask for Ms. Sørensen.", false, "09:00"},
    {"Bug triage", "Meeting", 45},
    {"Release notes 3.4", "Deadline", 0},
    {"Soldering workshop", "Training", 120},
    {"Whiteboard: battery life", "Meeting", 60, "Goal: two winters on one pack."},
    {"Unpack and test samples", "", 60},
});

constexpr std::array kSales = std::to_array<Activity>({
    {"Call {client}", "Phone Call", 30, "They asked about delivery before the summer shutdown."},
    {"Visit {client}", "Travel", 180, "Take the demo kit and two price lists.\r\nParking is behind the main building."},
    {"Offer for {client}", "Deadline", 0},
    {"Online demo for {client}", "Meeting", 60, "Show the dashboard first, hardware second."},
    {"Contract renewal {client}", "Meeting", 60},
    {"Lunch with {client}", "Meeting", 90, "Table for four at \"Zum Anker\".", false, "12:30"},
    {"Prepare trade fair stand", "", 90},
    {"Price talks with {client}", "Phone Call", 45, "Our floor is 8 % off, not more."},
    {"Follow up on last week's demos", "Phone Call", 60},
    {"Tender {client}: questions due", "Deadline", 0},
    {"Train to {client}", "Travel", 0, "Leaves 6:52, change in Altenfels."},
    {"Customer story with {client}", "Meeting", 60},
    {"Forecast numbers to {colleague}", "Deadline", 0},
    {"Complaint: {client}", "Phone Call", 30, "Two probes arrived without their caps.\r\nReplacement is on its way, apologise all the same."},
    {"Partner webinar", "Training", 60},
    {"Kick-off {client}", "Meeting", 120, "Who does what, first delivery, training on site."},
    {"Go through leads with {colleague}", "Meeting", 45},
    {"Newsletter texts due", "Deadline", 0},
    {"Installation date {client}", "", 0},
    {"Coffee with the distributor", "Meeting", 45},
});

constexpr std::array kManagement = std::to_array<Activity>({
    {"Bank: credit line", "Meeting", 60},
    {"Budget talk with {colleague}", "Meeting", 60, "Half-year figures and what we move to next year."},
    {"Breakfast with {client}", "Meeting", 75, "", false, "08:00"},
    {"Annual review: {colleague}", "Meeting", 60, "", true},
    {"Auditor on site", "Meeting", 180, "Ledger, stock list, contracts over 20,000.", false, "09:30"},
    {"Panel at the water conference", "Travel", 0, "Slides to the organisers two days ahead."},
    {"Lawyer: licence agreement", "Phone Call", 45},
    {"Walk through production", "", 60},
    {"Board papers out", "Deadline", 0},
    {"Salary round", "Meeting", 90, "Draft 2, not to be forwarded.", true},
    {"Call {client}", "Phone Call", 30},
    {"Interview with the local paper", "Phone Call", 30, "They want to write about the river project."},
    {"Investor update due", "Deadline", 0},
    {"Lunch with the mayor's office", "Meeting", 90, "", false, "12:30"},
    {"Read patent draft", "", 60},
    {"Plan the strategy day with {colleague}", "Meeting", 60},
});

constexpr std::array kOffice = std::to_array<Activity>({
    {"Back-up restored on trial", "", 60, "Last month's tape.\r\nNote the time it takes."},
    {"New laptop for {colleague}", "", 45},
    {"Heating engineer comes", "", 60, "Key to the cellar is at the front desk."},
    {"VAT return due", "Deadline", 0},
    {"Invoices out", "Deadline", 0},
    {"Server updates", "", 120, "Mail is away for a quarter of an hour.", false, "17:00"},
    {"First day: new colleague", "Meeting", 120, "Desk, badge, accounts, lunch together.", false, "09:00"},
    {"Order office supplies", "", 30},
    {"Insurance call", "Phone Call", 30},
    {"Expense reports with {colleague}", "Meeting", 30},
    {"Travel bookings for the fair", "Travel", 45},
    {"Printer service", "", 0},
    {"Phone provider: new contract", "Phone Call", 30, "Ask for the \"team\" tariff."},
    {"Licence renewals", "Deadline", 0},
    {"Stock take, second floor", "", 150},
    {"Fruit & coffee order", "", 15},
});

constexpr std::array kCommon = std::to_array<Activity>({
    {"Catch up with {colleague}", "Meeting", 30},
    {"Lunch with {colleague}", "", 60, "The Thai place by the canal?", false, "12:00"},
    {"Quiet time, please don't book", "", 120},
    {"Coffee with {colleague}", "", 30, "", false, "14:30"},
    {"First aid course", "Training", 180, "", false, "09:00"},
    {"Dentist", "Doctor", 45, "", true, "08:15"},
    {"Eye test", "Doctor", 30, "", true},
    {"Leaving early", "", 0},
    {"Working from home", "", 0, "On the phone as usual."},
    {"Parcel: be at home until noon", "", 0, "", true},
    {"Language class", "Training", 90, "", false, "17:00"},
    {"Hand over to {colleague}", "Meeting", 30},
    {"School meeting", "", 60, "", true, "17:00"},
    {"Car to the garage", "", 30, "Courtesy car is booked.", true, "08:00"},
    {"Travel expenses due", "Deadline", 0},
    {"Talk about next month with {colleague}", "Meeting", 45},
    {"Tidy the desk", "", 30},
    {"Health check-up", "Doctor", 60, "Come without breakfast.", true, "07:45"},
    {"Visitors from {client}", "Meeting", 120, "Tour of the lab, then coffee in Birch."},
    {"Photos for the web site", "", 30, "Blue or green shirt, no stripes."},
    {"Security training", "Training", 60},
    {"Farewell coffee", "Party", 45, "For our trainee, bring a card.", false, "15:00"},
    {"Flu jab", "Doctor", 15, "", true},
    {"Meet the new trainees", "Meeting", 45},
});

constexpr std::array kEvenings = std::to_array<Activity>({
    {"Cinema with {colleague}", "Party", 150, "", false, "19:45"},
    {"Choir rehearsal", "", 120, "", false, "19:00"},
    {"Swimming", "Sport", 60, "", false, "18:30"},
    {"Climbing hall", "Sport", 120, "Rope is in the boot.", false, "18:00"},
    {"Concert: string quartet", "Party", 120, "", false, "20:00"},
    {"Call Grandma", "Phone Call", 30, "", true, "19:00"},
    {"Parents' evening", "", 90, "", true, "19:30"},
    {"Friends over for dinner", "Party", 180, "{colleague} doesn't eat fish.", false, "19:00"},
    {"Yoga", "Sport", 75, "", false, "18:15"},
    {"Quiz night at \"The Anchor\"", "Party", 150, "", false, "20:00"},
    {"Haircut", "", 45, "", true, "17:45"},
    {"Tenants' meeting", "", 90, "", true, "19:00"},
});

constexpr std::array kWeekends = std::to_array<Activity>({
    {"Lunch at Mum and Dad's", "", 120, "Bring the good olive oil.", false, "12:30"},
    {"Flea market", "", 0},
    {"Hike round the lake", "Sport", 240, "Meet at the \"Old Ferry\" car park.", false, "10:00"},
    {"Football tournament", "Sport", 180, "", false, "13:00"},
    {"Assemble the wardrobe", "", 120, "", true, "14:00"},
    {"Garden day", "", 0},
    {"Museum with the children", "", 120, "", true, "14:30"},
    {"Brunch with {colleague}", "Party", 120, "", false, "10:30"},
    {"Bicycle tour", "Sport", 300, "If it stays dry.", false, "09:30"},
    {"Weekend in the mountains", "Travel", 0},
    {"Move house: help {colleague}", "", 0, "Van is hired, bring gloves."},
    {"Theatre", "Party", 150, "", false, "19:30"},
});

constexpr std::array kRegulars = std::to_array<Regular>({
    {"default", "All-hands", "Meeting", "15:00", "16:00", "5", "kk_1", "", "", "Numbers, new people, questions.\r\nCake afterwards."},
    {"default", "Salaries are paid", "", "", "", "", "", "25", "vkl_pe"},
    {"default", "Timesheets due", "Deadline", "", "", "", "", "31", "vkl_pe", "Even if you were away."},
    {"default", "Fire doors are tested", "", "11:00", "11:15", "4", "kk_4", "", "", "A short bell, nobody has to leave."},
    {"engineering", "Stand-up", "Meeting", "09:15", "09:30", "2, 3, 4, 5, 6", "vko_1", "", ""},
    {"engineering", "Sprint planning", "Meeting", "10:00", "12:00", "2", "vko_2", "", "", "Bring estimates for the top ten."},
    {"engineering", "Sprint review", "Meeting", "14:00", "15:00", "6", "vko_2", "", "", "Show, don't tell."},
    {"engineering", "Release to the field", "Deadline", "", "", "4", "vko_3", "", ""},
    {"engineering", "Tech talk", "Training", "16:00", "16:45", "5", "kk_3", "", ""},
    {"engineering", "Lab clean-up", "", "", "", "", "", "1, 15", "vkl_ma"},
    {"sales", "Pipeline meeting", "Meeting", "09:00", "10:00", "2", "vko_1", "", "", "Only changes since last week, please."},
    {"sales", "Forecast", "Deadline", "", "", "6", "kk_4", "", ""},
    {"sales", "New price list", "", "", "", "", "", "1", "vkl_no", "Not published when the 1st is a weekend."},
    {"sales", "Happy hour with partners", "Party", "17:00", "19:00", "5", "kk_2", "", ""},
    {"board", "Board meeting", "Meeting", "16:00", "18:30", "4", "kk_2", "", "", "Minutes: Walter."},
    {"office", "Breakfast for everybody", "Party", "08:30", "09:30", "6", "kk_1", "", "", "Rolls, fruit, \"real\" coffee."},
    {"office", "Waste paper is collected", "", "", "", "3", "vko_3", "", ""},
    {"office", "Plants: water them", "", "", "", "2, 5", "vko_1", "", ""},
    {"sport", "Lunch run", "Sport", "12:00", "12:45", "3, 5", "vko_1", "", "", "Seven kilometres, slow group welcome."},
    {"sport", "Five-a-side football", "Sport", "18:30", "20:00", "4", "vko_2", "", "", "Hall B, bring light shoes."},
    {"admin", "Check back-ups", "", "08:30", "08:45", "2, 3, 4, 5, 6", "vko_1", "", ""},
    {"admin", "Update window", "", "18:00", "20:00", "4", "kk_3", "", ""},
    {"grace", "Walk and talk with Åsa", "Meeting", "08:15", "09:00", "3", "vko_1", "", ""},
    {"grace", "Piano lesson", "", "18:30", "19:15", "5", "vko_1", "", "", "", true},
    {"asa", "One to one: Zoë", "Meeting", "11:00", "11:30", "3", "vko_2", "", ""},
    {"asa", "One to one: Tomás", "Meeting", "11:30", "12:00", "3", "vko_2", "", ""},
    {"asa", "Physiotherapy", "Doctor", "07:45", "08:15", "6", "vko_2", "", "", "", true},
    {"zoe", "Spanish class", "Training", "17:30", "19:00", "4", "vko_1", "", ""},
    {"zoe", "Call the top five", "Phone Call", "10:00", "11:00", "5", "vko_1", "", ""},
    {"tomas", "Guitar with the band", "", "20:00", "22:00", "4", "vko_1", "", ""},
    {"tomas", "Mileage log", "Deadline", "", "", "", "", "5, 20", "vkl_ma"},
    {"noor", "Call with the Gulf office", "Phone Call", "07:00", "07:45", "1, 2, 3, 4, 5", "vko_1", "", ""},
    {"noor", "Swimming club", "Sport", "06:00", "07:00", "3", "vko_2", "", ""},
    {"jurgen", "One to one: Łukasz", "Meeting", "13:00", "13:30", "2", "vko_2", "", ""},
    {"jurgen", "One to one: Niamh", "Meeting", "13:00", "13:30", "3", "vko_2", "", ""},
    {"jurgen", "Volunteer fire brigade", "", "19:00", "21:00", "5", "kk_1", "", ""},
    {"lukasz", "Climbing", "Sport", "18:00", "20:00", "3", "vko_1", "", ""},
    {"lukasz", "Rent", "", "", "", "", "", "3", "vkl_ma", "", true},
    {"niamh", "Fiddle session", "Party", "20:00", "22:30", "5", "kk_2", "", "", "The Harp, back room."},
    {"niamh", "Sensor lab rota", "", "13:00", "16:00", "4", "vko_2", "", ""},
    {"priya", "School run", "", "15:30", "16:00", "2, 4, 6", "vko_1", "", "", "", true},
    {"priya", "Code reading circle", "Training", "16:15", "17:15", "3", "vko_3", "", ""},
    {"mikko", "Sauna", "", "19:00", "21:00", "7", "vko_1", "", ""},
    {"mikko", "Calibrate reference probe", "", "10:00", "11:00", "", "", "10, 20, 30", "vkl_ma"},
    {"ines", "Portfolio hour", "", "16:30", "17:30", "6", "vko_1", "", ""},
    {"ines", "Online course: type design", "Training", "18:30", "20:00", "2", "vko_1", "", ""},
    {"daniel", "Payroll run", "Deadline", "", "", "", "", "22", "vkl_pe", "Figures to the bank by noon."},
    {"daniel", "Post office", "", "16:00", "16:30", "2, 4, 6", "vko_1", "", ""},
    {"walter", "Mentoring hour", "Meeting", "14:00", "15:00", "5", "vko_2", "", ""},
});

constexpr std::array kStretches = std::to_array<Stretch>({
    {"engineering", "Climate chamber is being serviced", "", 9, 3, "", "", "Use the one in the basement."},
    {"engineering", "Field campaign on the river", "Travel", 29, 5, "08:00", "18:00", "Boat, two vans, all probes of batch 7."},
    {"sales", "Trade fair: Water & Waste", "Travel", 15, 4, "09:00", "18:00", "Hall 4, stand 4.117.\r\nStand duty list is on the door."},
    {"office", "Windows are cleaned", "", -6, 3},
    {"default", "Office closed: new floor", "Holiday", 44, 2},
    {"board", "Strategy days", "Meeting", 36, 2, "09:00", "17:00", "Hotel by the lake, come the evening before."},
    {"admin", "On call", "", -7, 7},
    {"admin", "On call", "", 21, 7},
    {"ines", "Illustration course", "Training", 2, 3, "13:00", "16:30"},
    {"niamh", "On call", "", 0, 7},
    {"mikko", "On call", "", 7, 7},
    {"lukasz", "On call", "", 14, 7},
    {"grace", "Conference \"Clear Rivers\"", "Travel", 8, 3},
});

constexpr std::array kAnniversaries = std::to_array<Anniversary>({
    {"default", "New Year's Day", "Holiday", 1, 1, "vkl_ok"},
    {"default", "Labour Day", "Holiday", 5, 1, "vkl_ok"},
    {"default", "Christmas Eve", "Holiday", 12, 24, "vkl_ok", "The office closes at noon."},
    {"default", "Christmas Day", "Holiday", 12, 25, "vkl_ok"},
    {"default", "Boxing Day", "Holiday", 12, 26, "vkl_ok"},
    {"default", "Founded on this day", "Party", 4, 20, "vkl_no", "A toast at four, unless it is a weekend."},
    {"default", "Summer party", "Party", 6, 21, "vkl_pe", "By the river, families welcome."},
    {"board", "Annual accounts due", "Deadline", 3, 31, "vkl_pe"},
    {"office", "Insurance renewal", "Deadline", 10, 1, "vkl_ma"},
    {"sport", "Company relay", "Sport", 9, 15, "vkl_ma", "Teams of five."},
    {"engineering", "Scales are re-certified", "", 2, 14, "vkl_ma"},
    {"sales", "Price round begins", "", 11, 2, "vkl_ma"},
    {"admin", "Certificates expire", "Deadline", 8, 18, "vkl_pe", "Renew a month ahead."},
});

constexpr std::array<std::string_view, 14> kClients{
    "Nordvik Waterworks", "Brauerei Hölzl", "Lakeside Dairy", "Port of Kelmar", "St. Alban's Hospital",
    "Aqualab Porto", "Kowalczyk i Syn", "Glen Morag Distillery", "Universität Altenfels", "Sjöstad Paper",
    "Hotel Miramar", "Canal Trust", "Öresund Ferries", "Tannery Blanc"};
// clang-format on

}  // namespace

std::span<const Activity> ActivitiesOf(Department department) {
  switch (department) {
    case Department::kEngineering:
      return kEngineering;
    case Department::kSales:
      return kSales;
    case Department::kManagement:
      return kManagement;
    case Department::kOffice:
      return kOffice;
  }
  return {};
}

std::span<const Activity> CommonActivities() {
  return kCommon;
}
std::span<const Activity> EveningActivities() {
  return kEvenings;
}
std::span<const Activity> WeekendActivities() {
  return kWeekends;
}
std::span<const Regular> Regulars() {
  return kRegulars;
}
std::span<const Stretch> Stretches() {
  return kStretches;
}
std::span<const Anniversary> Anniversaries() {
  return kAnniversaries;
}
std::span<const std::string_view> Clients() {
  return kClients;
}

}  // namespace orlune::demo
