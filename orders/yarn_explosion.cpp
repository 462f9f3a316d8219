#include "orders/yarn_explosion.h"

#include <algorithm>

#include "host/decimal.h"

namespace orders {
namespace {

bool InMetres(const FabricDemand& fabric) { return fabric.unit == "MT"; }

}  // namespace

YarnExplosion::YarnExplosion(host::Host& host, host::Dataset& yarns)
    : database_(host.GetTabela().IBDatabase()), words_(host.GetFuncoes()), yarns_(yarns) {}

// Purchases are matched on the colour of the fabric, stock on the colour of the yarn: yarn is bought for a fabric
// colour and dyed later.
std::unique_ptr<host::TTIQuery> YarnExplosion::Composition(std::string_view order, const FabricDemand& fabric) const {
  const Words& w = words_;
  return OpenQuery(
      database_,
      {"SELECT COMP.CODIGO, MATERIAL.DESCRICAO, MATERIAL.UNIDADE, ",
       "COMP.PERC, COMP.COR_I AS COR, CADCOR.DESCRICAO AS DESCCOR, ",
       "COMP.LFA, COMP.ROCA, MATERIAL.NE, COMP.ORDEM, COMP.COMP_PONTO AS MILIMETRO, COMP.TENSAO, ",
       "COMP.DIAMETRO, COMP.FINURA, COMP.ALIMENTADORES, MATERIAL.CONCENTRACAO AS DTEX, MATERIAL.GRAMATURA AS DEN,",
       "MATERIAL.LARGURA AS TEX, ",
       "(SELECT SUM(COI.QTDE - COI.QTDE_B) AS QTDE FROM " + w.Table("CO_ITEN") + " COI",
       "WHERE COI.CODIGO = COMP.CODIGO ",
       "AND COI.COR = COMP.COR ",
       "AND COI.SITUACAO = " + w.Text("A"),
       "GROUP BY COI.CODIGO) AS QTDE_OC, ",
       "(SELECT SUM(MATITEN.QTDE) FROM " + w.Table("MAT_ITEN") + " MATITEN",
       "WHERE MATITEN.CODIGO = COMP.CODIGO ",
       "AND MATITEN.COR = COMP.COR_I) AS QTDE, ",  //
       RemainingConsumption(order, InMetres(fabric)),
       "FROM " + w.Table("COMP_MATERIAL") + " COMP ",
       "LEFT JOIN " + w.Table("CADCOR") + " CADCOR ON (CADCOR.COR = COMP.COR_I)",
       "LEFT JOIN " + w.Table("MATERIAL") + " MATERIAL ON (MATERIAL.CODIGO = COMP.CODIGO)",
       "WHERE COMP.MATERIAL = " + w.Text(fabric.code),
       "AND COMP.COR = " + w.Text(fabric.colour),
       "AND NOT (COMP.COR_I LIKE " + w.Text("%*%") + ")"});
}

// What the stored order has not yet written off, over all its fabrics that take the yarn. The unit of the fabric
// being exploded decides for all of them.
std::string YarnExplosion::RemainingConsumption(std::string_view order, bool metres) const {
  const Words& w = words_;
  std::string sql =
      metres
          ? "(SELECT SUM(((TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B)) * (COMPM.PERC /100) * CAST(MAT.PESO AS NUMERIC(9,5))) "
          : "(SELECT SUM(((TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B) * COMPM.PERC) /100) ";
  sql += "\nFROM " + w.Named("TECEL_ITEN");
  sql += "\nLEFT JOIN " + w.Table("COMP_MATERIAL") +
         " COMPM ON (TECEL_ITEN.CODIGO = COMPM.MATERIAL AND TECEL_ITEN.COR = COMPM.COR)";
  if (metres) sql += "\nLEFT JOIN " + w.Table("MATERIAL") + " MAT ON (COMPM.MATERIAL = MAT.CODIGO)";
  sql += "\nWHERE TECEL_ITEN.NUMERO = " + w.Text(order);
  sql += "\nAND COMPM.CODIGO = COMP.CODIGO ";
  sql += "\nAND COMPM.COR_I = COMP.COR_I) AS CONSUMOTOT ";
  return sql;
}

// The outer join finds no more than an inner one would, since a missing composition fails the condition. It makes the
// engine begin with the order's items: given the choice it reads every composition there is.
void YarnExplosion::Remember(std::string_view order) {
  const Words& w = words_;
  const auto rows = OpenQuery(
      database_, {"SELECT COMP.MATERIAL, COMP.COR, COMP.CODIGO, COMP.COR_I, COMP.LFA, COMP.ROCA, COMP.PERC",
                  "FROM " + w.Named("TECEL_ITEN"),
                  "LEFT JOIN " + w.Table("COMP_MATERIAL") +
                      " COMP ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)",
                  "WHERE TECEL_ITEN.NUMERO = " + w.Text(order), "AND NOT (COMP.COR_I LIKE " + w.Text("%*%") + ")"});
  remembered_.emplace();
  for (; !rows->Eof(); rows->Next()) {
    const Fabric fabric(rows->FieldByName("MATERIAL").AsText(), rows->FieldByName("COR").AsText());
    (*remembered_)[fabric].push_back(LineOf(*rows, "COR_I"));
  }
}

// The yarn list keeps feeders as a whole number, so that is what they are compared as.
YarnExplosion::Line YarnExplosion::LineOf(const host::TTIQuery& row, std::string_view colour_column) {
  return {.yarn = row.FieldByName("CODIGO"),
          .colour = row.FieldByName(colour_column),
          .lfa = row.FieldByName("LFA"),
          .feeders = host::Value(row.FieldByName("ROCA").AsInteger()),
          .percentage = row.FieldByName("PERC").AsFloat()};
}

bool YarnExplosion::Stands(const Line& line) {
  return yarns_.Locate("codigo;cor;lfa;roca", {line.yarn, line.colour, line.lfa, line.feeders});
}

bool YarnExplosion::AllStand(const std::vector<Line>& lines) {
  return std::all_of(lines.begin(), lines.end(), [this](const Line& line) { return Stands(line); });
}

void YarnExplosion::Add(std::string_view order, const FabricDemand& fabric) {
  const double kilograms = InMetres(fabric) ? fabric.quantity * fabric.weight : fabric.quantity;
  if (remembered_) {
    const std::vector<Line>& lines = (*remembered_)[{fabric.code, fabric.colour}];
    if (AllStand(lines)) {
      for (const Line& line : lines) {
        Stands(line);
        AddConsumption(kilograms / 100 * line.percentage);
      }
      return;
    }
  }
  const auto rows = Composition(order, fabric);
  for (; !rows->Eof(); rows->Next()) {
    const Line line = LineOf(*rows, "COR");
    const double consumption = kilograms / 100 * line.percentage;
    if (Stands(line)) {
      AddConsumption(consumption);
    } else {
      AppendYarn(*rows, fabric, consumption);
    }
  }
}

void YarnExplosion::AddConsumption(double consumption) {
  yarns_.Edit();
  yarns_["Consumo"].Set(yarns_["Consumo"].AsFloat() + consumption);
  yarns_.Post();
}

void YarnExplosion::AppendYarn(const host::TTIQuery& row, const FabricDemand& fabric, double consumption) {
  yarns_.Append();
  yarns_["CodMalha"].Set(fabric.code);
  yarns_["CodMalhaCor"].Set(fabric.colour);
  for (const char* name : {"Ordem", "Codigo", "Descricao", "Unidade", "Cor", "DescCor", "LFA", "NE", "Qtde_OC", "Qtde",
                           "Perc", "Milimetro", "Tensao", "Diametro", "Finura", "DTex", "Den", "Tex"}) {
    yarns_[name].Set(row.FieldByName(name));
  }
  yarns_["Consumo"].Set(consumption);
  yarns_["Roca"].Set(row.FieldByName("ROCA").AsInteger());
  yarns_["Aliment"].Set(row.FieldByName("ALIMENTADORES").AsInteger());
  yarns_["Consumo_Total"].Set(host::RoundTo(row.FieldByName("CONSUMOTOT").AsFloat(), 3));
  yarns_.Post();
}

}  // namespace orders
