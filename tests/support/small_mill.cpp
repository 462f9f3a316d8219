// The small mill that most tests start from. Tests rely on every figure here; add rows rather than change them.
//
// Mills       M00001 active, with prices        M00002 inactive, with a price
//             M00003 blocked, with a price      M00004 active, without prices, SIMPLES "S"
// Supplier    F0001 "Fiação Serra" (the first five characters of lot F0001-9)
// Colours     01 Branco   02 Azul-marinho   03 Vermelho (in no stock)   CR Cru (of the yarns)
// Deposits    D1 yarn (PRIORIDADE "1")   D2 yarn (PRIORIDADE "2")   DF fabric ("3"); none belongs to a mill
// Fabrics     unit  PESO  KG_ROLO  composition, for each of its colours           colours  prices of M00001
//   F1        KG    1     22       Y1 60 % CR, Y2 40 % CR                          01, 02   5.00; colour 02: 6.50
//   F2        KG    1     none     none                                            01, 02   4.00
//   F3        KG    1     20       Y1 70 % CR, Y3 30 % in no colour ("*****")      01       5.50
//   FM        MT    0.25  0        Y1 50 % CR, Y2 50 % CR                          01       1.20
//   FP        PC    0.3   0        Y1 100 % CR                                     01       0.90
//   F9        KG    1     none     none; ATIVO "N"                                 01       3.00
//   All have ESTOQUE "S" and an empty stock row in DF, lot 000000, per colour. F1: LARGURA 1.8, GRAMATURA 160,
//   MAXIMO (tare) 0.3; its composition: LARGURA 1.75, GRAMATURA 165, DIAMETRO 30, FINURA 28, ALIMENTADORES 96.
// Yarns       Y1 NE 30, REPOSICAO 20, CUSTO_IMP 2   Y2 NE 24, REPOSICAO 30, CUSTO_IMP 3   Y3 NE 20, REPOSICAO 15
// Stock       Y1 CR   D1 L1 100 at 20.00   D1 L2 50 at 22.00   D2 L1 30 at 21.00    together 180
//             Y2 CR   D1 L1 80 at 30.00    D2 L3 40 at 31.00                        together 120
//             Y3 CR   D1 L1 60 at 15.00    D1 F0001-9 25 at 16.00                   together 85
//             each with its ledger row (document INICIAL, kind SI, 02/01/2026) and the place "A1"
// On order    OC0001: Y1 colour 01 200, of which 50 received, open; OC0002: Y2 colour 01 90, closed
// Sales order PV0001 of M00001
// Rules       R1 "35"   R2 "GRAMATURA / 4" (F1: 40 %)
// Machines    MQ1, MQ2   Term 30   Flow FL1
// Shifts      1 by day, 06:00 to 14:00   3 by night ("S"), 22:00 to 06:00; both on all seven days
// People      P1 Ana Souza, shift 1   P2 João Lima, shift 3
// Parameters  "MAL" 40 "3", 50 "N", 60 "N", 70 "S", 90 "S"; "COM" 80 empty; "SIS" 20 "N"
#include <string>

#include "app/firebird/database.h"
#include "host/host.h"
#include "support/mill.h"

namespace test {
namespace {

void FillPartners(Mill& mill) {
  const auto partner = [&](const char* code, const char* name, const char* active, const char* blocked,
                           const char* simple) {
    mill.Insert("ENTIDADE",
                {{"CODCLI", code}, {"NOME", name}, {"ATIVO", active}, {"BLOQUEIO", blocked}, {"SIMPLES", simple}});
  };
  partner("M00001", "Malharia Aurora", "S", "N", "N");
  partner("M00002", "Malharia Boa Vista", "N", "N", "N");
  partner("M00003", "Malharia Catarina", "S", "S", "N");
  partner("M00004", "Malharia Diamante", "S", "N", "S");
  partner("F0001", "Fiação Serra", "S", "N", "N");
  mill.Insert("PEDIDO", {{"NUMERO", "PV0001"}, {"CODCLI", "M00001"}});
}

void FillPlacesAndPeople(Mill& mill) {
  const auto described = [&](const char* table, const char* key, const char* code, const char* text) {
    mill.Insert(table, {{key, code}, {"DESCRICAO", text}});
  };
  described("CADCOR", "COR", "01", "Branco");
  described("CADCOR", "COR", "02", "Azul-marinho");
  described("CADCOR", "COR", "03", "Vermelho");
  described("CADCOR", "COR", "CR", "Cru");
  const auto deposit = [&](const char* code, const char* text, const char* priority) {
    mill.Insert("DEPOSITO", {{"CODIGO", code}, {"DESCRICAO", text}, {"PRIORIDADE", priority}});
  };
  deposit("D1", "Depósito de fios", "1");
  deposit("D2", "Depósito de fios 2", "2");
  deposit("DF", "Depósito de malha", "3");
  described("MAQUINA", "MAQUINA", "MQ1", "Circular 30\" 28");
  described("MAQUINA", "MAQUINA", "MQ2", "Circular 34\" 24");
  described("TABPRZ", "PRAZO", "30", "30 dias");
  described("FLUXOTIN", "CODIGO", "FL1", "Malha crua");

  const auto shift = [&](const char* code, const char* text, const char* night, const char* from, const char* to) {
    mill.Insert("TURNO", {{"TURNO", code}, {"DESCRICAO", text}, {"NOTURNO", night}});
    for (int day = 1; day <= 7; ++day) {
      mill.Insert("TURNO_HORARIOS", {{"TURNO", code}, {"DIA", day}, {"ENTRADA", from}, {"SAIDA", to}});
    }
  };
  shift("1", "Dia", "N", "06:00:00", "14:00:00");
  shift("3", "Noite", "S", "22:00:00", "06:00:00");
  mill.Insert("PESSOAL", {{"CODIGO", "P1"}, {"NOME", "Ana Souza"}, {"TURNO", "1"}});
  mill.Insert("PESSOAL", {{"CODIGO", "P2"}, {"NOME", "João Lima"}, {"TURNO", "3"}});
}

void FillFabrics(Mill& mill) {
  const auto fabric = [&](const char* code, const char* text, const char* unit, double weight, const char* active) {
    mill.Insert("MATERIAL", {{"CODIGO", code},
                             {"DESCRICAO", text},
                             {"UNIDADE", unit},
                             {"PESO", weight},
                             {"ATIVO", active},
                             {"ESTOQUE", "S"}});
  };
  const auto colour = [&](const char* code, const char* cor) {
    mill.Insert("MAT_ITEN", {{"CODIGO", code}, {"COR", cor}, {"DEPOSITO", "DF"}, {"LOTE", "000000"}});
  };
  fabric("F1", "Meia malha 30/1 PV", "KG", 1, "S");
  fabric("F2", "Moletom sem composição", "KG", 1, "S");
  fabric("F3", "Meia malha mescla", "KG", 1, "S");
  fabric("FM", "Ribana em metros", "MT", 0.25, "S");
  fabric("FP", "Gola em peças", "PC", 0.3, "S");
  fabric("F9", "Piquet fora de linha", "KG", 1, "N");
  mill.Exec("UPDATE {MATERIAL} SET LARGURA = 1.8, GRAMATURA = 160, MAXIMO = 0.3 WHERE CODIGO = 'F1'");
  for (const char* code : {"F1", "F2", "F3", "FM", "FP", "F9"}) colour(code, "01");
  colour("F1", "02");
  colour("F2", "02");

  const auto yarn = [&](const char* code, const char* text, int count, double replacement, double cost) {
    mill.Insert("MATERIAL", {{"CODIGO", code},
                             {"DESCRICAO", text},
                             {"UNIDADE", "KG"},
                             {"PESO", 1},
                             {"NE", count},
                             {"REPOSICAO", replacement},
                             {"CUSTO_IMP", cost},
                             {"ESTOQUE", "S"}});
  };
  yarn("Y1", "Fio 30/1 algodão", 30, 20, 2);
  yarn("Y2", "Fio 24/1 poliéster", 24, 30, 3);
  yarn("Y3", "Fio 20/1 viscose", 20, 15, 0);
}

void FillCompositions(Mill& mill) {
  const auto line = [&](const char* fabric, const char* colour, int order, const char* yarn, const char* yarn_colour,
                        double percent, double roll) {
    mill.Insert("COMP_MATERIAL", {{"MATERIAL", fabric},
                                  {"COR", colour},
                                  {"ORDEM", order},
                                  {"CODIGO", yarn},
                                  {"COR_I", yarn_colour},
                                  {"PERC", percent},
                                  {"KG_ROLO", roll}});
  };
  for (const char* colour : {"01", "02"}) {
    line("F1", colour, 1, "Y1", "CR", 60, 22);
    line("F1", colour, 2, "Y2", "CR", 40, 22);
  }
  mill.Exec(
      "UPDATE {COMP_MATERIAL} SET LARGURA = 1.75, GRAMATURA = 165, DIAMETRO = 30, FINURA = 28, ALIMENTADORES = 96 "
      "WHERE MATERIAL = 'F1'");
  line("F3", "01", 1, "Y1", "CR", 70, 20);
  line("F3", "01", 2, "Y3", "*****", 30, 20);
  line("FM", "01", 1, "Y1", "CR", 50, 0);
  line("FM", "01", 2, "Y2", "CR", 50, 0);
  line("FP", "01", 1, "Y1", "CR", 100, 0);
  mill.Insert("TNG_REGRA", {{"CODIGO", "R1"}, {"DESCRICAO", "Percentual fixo"}, {"FORMULA", "35"}});
  mill.Insert("TNG_REGRA", {{"CODIGO", "R2"}, {"DESCRICAO", "Pela gramatura"}, {"FORMULA", "GRAMATURA / 4"}});
}

void FillPrices(Mill& mill) {
  const auto price = [&](const char* fabric, const char* partner, const char* colour, double cost) {
    mill.Insert("CADCORTI", {{"TIPO", "C"}, {"CODIGO", fabric}, {"CODCLI", partner}, {"COR", colour}, {"CUSTO", cost}});
  };
  price("F1", "M00001", "0", 5);
  price("F1", "M00001", "02", 6.5);
  price("F2", "M00001", "0", 4);
  price("F3", "M00001", "0", 5.5);
  price("FM", "M00001", "0", 1.2);
  price("FP", "M00001", "0", 0.9);
  price("F9", "M00001", "0", 3);
  price("F1", "M00002", "0", 5);
  price("F1", "M00003", "0", 5);

  const auto purchase = [&](const char* number, const char* yarn, double quantity, double received, const char* state) {
    mill.Insert("CO_ITEN", {{"NUMERO", number},
                            {"ITEM", 1},
                            {"CODIGO", yarn},
                            {"COR", "01"},
                            {"QTDE", quantity},
                            {"QTDE_B", received},
                            {"SITUACAO", state}});
  };
  purchase("OC0001", "Y1", 200, 50, "A");
  purchase("OC0002", "Y2", 90, 0, "B");
}

void FillStock(Mill& mill) {
  const auto entry = [&](const char* yarn, const char* deposit, const char* lot, double quantity, double price) {
    const auto movement = mill.App().NewEstoque();
    movement->Material = yarn;
    movement->Cor = "CR";
    movement->Lote = lot;
    movement->Deposito = deposit;
    movement->Documento = "INICIAL";
    movement->TipoDocumento = "SI";
    movement->Data = host::Date::FromParts(2026, 1, 2).value();
    movement->Quantidade = quantity;
    movement->PrecoUnitario = price;
    movement->Custo = price;
    movement->Local = "A1";
    movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementInbound);
    movement->Usuario = mill.App().GetFuncoes().vUsuario();
    movement->MovimentaEstoqueMaterial(true, true);
  };
  entry("Y1", "D1", "L1", 100, 20);
  entry("Y1", "D1", "L2", 50, 22);
  entry("Y1", "D2", "L1", 30, 21);
  entry("Y2", "D1", "L1", 80, 30);
  entry("Y2", "D2", "L3", 40, 31);
  entry("Y3", "D1", "L1", 60, 15);
  entry("Y3", "D1", "F0001-9", 25, 16);
}

void FillParameters(Mill& mill) {
  mill.SetParameter("MAL", 40, "3");
  mill.SetParameter("MAL", 50, "N");
  mill.SetParameter("MAL", 60, "N");
  mill.SetParameter("MAL", 70, "S");
  mill.SetParameter("MAL", 90, "S");
  mill.SetParameter("COM", 80, "");
  mill.SetParameter("SIS", 20, "N");
}

}  // namespace

void FillSmallMill(Mill& mill) {
  app::firebird::Database& database = mill.Db();
  database.BeginAction();  // one durable write for all of it
  try {
    FillPartners(mill);
    FillPlacesAndPeople(mill);
    FillFabrics(mill);
    FillCompositions(mill);
    FillPrices(mill);
    FillStock(mill);
    FillParameters(mill);
  } catch (...) {
    database.EndAction(app::firebird::Database::Outcome::kFailed);
    throw;
  }
  database.EndAction(app::firebird::Database::Outcome::kOk);
  mill.TakeStatements();
}

}  // namespace test
