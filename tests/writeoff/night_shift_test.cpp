// A roll of a night shift that has ended by the database's clock is dated the next day.
#include "write_off_mill.h"

namespace test {
namespace {

using host::ActResult;

class NightShift : public WriteOffMill {
 protected:
  // The ends of shift 3: of today by the database's clock, and of the other days.
  void Ends(const char* today, const char* other_days) {
    mill_.Exec("UPDATE {TURNO_HORARIOS} SET SAIDA = '" + std::string(other_days) + "'");
    mill_.Exec("UPDATE {TURNO_HORARIOS} SET SAIDA = '" + std::string(today) +
               "' WHERE DIA = EXTRACT(WEEKDAY FROM CURRENT_DATE) + 1");
  }
  std::string DateOfRoll(std::string_view shift, std::string_view date) {
    ReservedOrder();
    Load();
    Type("EdtTurno", shift);
    Type("EdtData", date);
    EXPECT_EQ(Roll("10"), ActResult::kDone);
    EXPECT_EQ(Boxes(), std::vector<Box>());
    return Rolls().empty() ? "none" : Rolls().front().at("DT_LAN").AsText();
  }
};

constexpr const char* kPassed = "00:00:00";
constexpr const char* kToCome = "23:59:59.9999";

TEST_F(NightShift, ThatHasEndedIsOfTheNextDay) {
  Ends(kPassed, kToCome);
  EXPECT_EQ(DateOfRoll("3", "09/03/2026"), "10/03/2026");
  // The stock keeps the date that was typed.
  EXPECT_EQ(Value("SELECT DISTINCT DATA FROM {MAT_MOV} WHERE TIPO_DOC = 'BT'").AsText(), "09/03/2026");
}

TEST_F(NightShift, ThatGoesOnIsOfItsDay) {
  Ends(kToCome, kPassed);
  EXPECT_EQ(DateOfRoll("3", "09/03/2026"), "09/03/2026");
}

TEST_F(NightShift, OfTheMonthsEnd) {
  Ends(kPassed, kPassed);
  EXPECT_EQ(DateOfRoll("3", "28/02/2026"), "01/03/2026");
}

TEST_F(NightShift, OfTheYearsEnd) {
  mill_.SetClock("2026-12-31 23:50:00");
  Ends(kPassed, kPassed);
  EXPECT_EQ(DateOfRoll("3", "31/12/2026"), "01/01/2027");
  EXPECT_EQ(Value("SELECT DISTINCT DATA FROM {MAT_MOV} WHERE TIPO_DOC = 'BT'").AsText(), "31/12/2026");
}

TEST_F(NightShift, DayShiftNeverMoves) {
  Ends(kPassed, kPassed);
  EXPECT_EQ(DateOfRoll("1", "09/03/2026"), "09/03/2026");
}

TEST_F(NightShift, WithoutShiftNothingIsAsked) {
  Ends(kPassed, kPassed);
  ReservedOrder();
  Load();
  mill_.TakeStatements();
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Rolls().front().at("DT_LAN").AsText(), "10/03/2026");
  EXPECT_TRUE(mill_.TakeStatements("NOTURNO").empty());
}

TEST_F(NightShift, WithoutHoursForTodayIsOfItsDay) {
  mill_.Exec("DELETE FROM {TURNO_HORARIOS}");
  EXPECT_EQ(DateOfRoll("3", "09/03/2026"), "09/03/2026");
}

}  // namespace
}  // namespace test
