// One day at the mill, through the windows and as a script: the same rows in every table.
#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "app/script/driver.h"
#include "desktop/scenario/hands.h"

namespace test {
namespace {

void Prepare(Mill& mill) { mill.SetParameter("MAL", 70, "N"); }

// When a movement of stock was written is told by the database's own clock, which nobody sets.
constexpr const char* kDatabaseClock = "MOMENTO";

using Table = std::vector<std::string>;

std::vector<std::string> Names(Mill& mill, const std::string& sql) {
  std::vector<std::string> names;
  for (const Row& row : mill.Rows(sql)) names.push_back(row.at("NAME").AsText());
  return names;
}

std::string Whole(const host::Value& value) {
  if (value.IsNull()) return "null";
  std::ostringstream text;
  text.precision(17);
  if (value.IsNumber() && !value.IsInteger()) {
    text << value.AsFloat();
  } else {
    text << value.AsText();
  }
  return text.str();
}

/// Every row of every table, whole, in an order that does not hang on when it was written.
std::map<std::string, Table> Everything(Mill& mill) {
  std::map<std::string, Table> tables;
  for (const std::string& name :
       Names(mill,
             "SELECT TRIM(RDB$RELATION_NAME) AS NAME FROM RDB$RELATIONS WHERE RDB$SYSTEM_FLAG = 0 AND "
             "RDB$VIEW_BLR IS NULL")) {
    std::string columns;
    for (const std::string& column :
         Names(mill, "SELECT TRIM(RDB$FIELD_NAME) AS NAME FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = '" + name +
                         "' ORDER BY RDB$FIELD_POSITION")) {
      if (column != kDatabaseClock) columns += (columns.empty() ? "" : ", ") + column;
    }
    Table& rows = tables[name];
    for (const Row& row : mill.Rows("SELECT " + columns + " FROM " + name)) {
      std::string line;
      for (const auto& [column, value] : row) line += column + "=" + Whole(value) + "; ";
      rows.push_back(line);
    }
    std::sort(rows.begin(), rows.end());
  }
  return tables;
}

class SameDatabase : public Scenario {
 protected:
  SameDatabase() : Scenario(Prepare) {}

  void DayByKeys() {
    Compose();
    TypeOrders();
    WriteOff();
    CopyDeleteAndAlter();
  }

 private:
  static void Save() { Press(Qt::Key_G, Qt::AltModifier); }
  static void Close() { Press(Qt::Key_W, Qt::ControlModifier); }

  void TypeYarn(const char* code, const char* feeders, const char* first, const char* second) {
    hands_.Type("Codigo", QString::fromUtf8(code));
    hands_.Type("Milimetros", QStringLiteral("3"));
    hands_.Type("ROCA", QString::fromUtf8(feeders));
    // The colours stand in the order in which the database hands them over.
    const bool in_order = hands_.Grid().ColumnOf("01") < hands_.Grid().ColumnOf("02");
    hands_.Type(in_order ? "01" : "02", QString::fromUtf8(in_order ? first : second));
    hands_.Type(in_order ? "02" : "01", QString::fromUtf8(in_order ? second : first));
    Press(Qt::Key_Return);
  }

  void Compose() {
    desktop_.Open("TFmCadComposi");
    hands_.Enter("EdtCodMat", QStringLiteral("F2"));
    hands_.Fill("EdtKgRolo", QStringLiteral("22"));
    hands_.Fill("EdtAgulhas", QStringLiteral("2000"));
    hands_.GoTo("GrdComposi");
    TypeYarn("Y1", "48", "CR", "CR");
    Press(Qt::Key_Down);
    desktop_.ExpectBox(QStringLiteral("Cor não cadastrada no Material. Deseja cadastrar?"), Reply::kYes);
    TypeYarn("Y2", "32", "01", "CR");
    desktop_.ExpectBox(QStringLiteral("Composição incorreta. Deseja recalcular?"), Reply::kYes);
    Save();
    Close();
    EXPECT_EQ(desktop_.Desk().Find("TFmCadComposi"), nullptr);
  }

  void ToLot(const char* yarn, const char* lot, const char* deposit) {
    hands_.GoTo("GrdFios");
    hands_.Row({{"Codigo", yarn}});
    hands_.GoTo("GrdEstoque");
    hands_.Row({{"Lote", lot}, {"Deposito", deposit}});
  }

  void TypeOrders() {
    OpenOrders();
    Press(Qt::Key_Return);
    hands_.Enter("EdtMalharia", QStringLiteral("M00001"));
    hands_.Enter("EdtFicha", QStringLiteral("F-1"));
    hands_.Enter("EdtPrazo", QStringLiteral("30"));
    hands_.Enter("EdtMaquina", QStringLiteral("MQ1"));
    hands_.Enter("EdtPonto", QStringLiteral("3,6"));
    hands_.Enter("EdtDeposito", QStringLiteral("DF"));
    hands_.GoTo("DBGrid6");
    TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
    Press(Qt::Key_Down);
    TypeItem(QStringLiteral("F2"), QStringLiteral("02"), QStringLiteral("40"));
    hands_.Type("Obs", QStringLiteral("não lavar"));
    Save();
    hands_.Enter("EdtNumero", QStringLiteral("000001"));
    ToLot("Y1", "L1", "D1");
    hands_.Cell("Sel");
    Press(Qt::Key_Space);
    hands_.Type("Qtde_Res", QStringLiteral("75"));
    ToLot("Y1", "L2", "D1");
    hands_.Cell("Sel");
    Press(Qt::Key_Space);
    ToLot("Y2", "L1", "D1");
    hands_.Type("Qtde_Res", QStringLiteral("58,182"));
    hands_.Cell("Sel");
    Press(Qt::Key_Space);
    Save();
    Press(Qt::Key_Delete);
    Press(Qt::Key_Return);
    hands_.Enter("EdtMalharia", QStringLiteral("M00001"));
    hands_.Enter("EdtDeposito", QStringLiteral("DF"));
    hands_.GoTo("DBGrid6");
    TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("30"));
    Save();
  }

  void Confirm(const char* quantity) {
    hands_.Fill("EdtQtde", QString::fromUtf8(quantity));
    Press(Qt::Key_F8);
  }

  void TakeLot(const char* lot, const char* deposit) {
    Press(Qt::Key_F6);
    hands_.Row({{"Lote", lot}, {"Deposito", deposit}});
    Press(Qt::Key_F8);
  }

  void WriteOff() {
    desktop_.Open("TfmMovBaiTec");
    hands_.Enter("EdtLote", QStringLiteral("000001"));
    hands_.Enter("EdtNFRet", QStringLiteral("NF77"));
    hands_.Enter("EdtFunc", QStringLiteral("P1"));
    Confirm("20,3");
    desktop_.ExpectBox(QStringLiteral("Baixa já Realizada."));
    Confirm("20,3");
    Press(Qt::Key_F6);
    hands_.Row({{"Codigo", "F2"}});
    Press(Qt::Key_F6);
    Confirm("12");
    hands_.Enter("EdtLote", QStringLiteral("000002"));
    desktop_.GetBoxes().ExpectDialog(QStringLiteral("Selecione os consumos"), [this](QWidget&) {
      TakeLot("L2", "D1");
      TakeLot("L3", "D2");
    });
    Confirm("10,3");
    Press(Qt::Key_F6);
    hands_.Cell("Baixada");
    Press(Qt::Key_Space);
    Close();
  }

  void CopyDeleteAndAlter() {
    hands_.Enter("EdtNumero", QStringLiteral("000002"));
    desktop_.ExpectBox(QStringLiteral("Deseja duplicar esta ordem?"), Reply::kYes);
    Press(Qt::Key_D, Qt::AltModifier);
    Press(Qt::Key_Return);
    desktop_.ExpectBox(QStringLiteral("Deseja excluir totalmente a Ordem de Tecelagem?"), Reply::kYes);
    Press(Qt::Key_E, Qt::AltModifier);
    hands_.Enter("EdtNumero", QStringLiteral("000001"));
    hands_.GoTo("DBGrid6");
    hands_.Row({{"Codigo", "F1"}});
    hands_.Type("Qtde", QStringLiteral("110"));
    Save();
    Close();
  }
};

app::script::RunResult DayByScript(Mill& mill) {
  std::ifstream file(std::string(TECELAGEM_SOURCE_DIR) + "/tests/desktop/scenario/day_at_the_mill.js");
  std::stringstream source;
  source << file.rdbuf();
  std::ostringstream output;
  std::ostringstream notes;
  return app::script::Run(mill.App(), mill.Person(), source.str(),
                          {"day_at_the_mill.js", std::chrono::milliseconds(0), output, notes});
}

TEST_F(SameDatabase, ByKeysAndByScript) {
  Mill scripted;
  scripted.SetClock(kAfternoon);
  FillSmallMill(scripted);
  Prepare(scripted);
  const auto at_first = Everything(scripted);
  EXPECT_EQ(at_first, Everything(desktop_.GetMill()));
  const app::script::RunResult run = DayByScript(scripted);
  ASSERT_TRUE(run.ok) << run.error;

  DayByKeys();
  ASSERT_TRUE(desktop_.GetBoxes().Met());

  const auto by_script = Everything(scripted);
  const auto by_keys = Everything(desktop_.GetMill());
  ASSERT_EQ(by_script.size(), by_keys.size());
  for (const auto& [table, rows] : by_script) EXPECT_EQ(by_keys.at(table), rows) << table;
  // And it was a day's work that is compared.
  for (const char* worked_on :
       {"TECEL_001", "TECEL_ITEN_001", "TECELB_001", "BAIXA_FIO_001", "MAT_RESERVA_001", "MAT_MOV_001", "MAT_ITEN_001",
        "COMP_MATERIAL_001", "MATERIAL_001", "TEC_LOG", "TEC_CONTADOR"}) {
    EXPECT_NE(by_script.at(worked_on), at_first.at(worked_on)) << worked_on;
  }
  EXPECT_EQ(by_script.at("TECELB_001").size(), 3U);
}

}  // namespace
}  // namespace test
