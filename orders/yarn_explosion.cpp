#include "orders/yarn_explosion.h"

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

void YarnExplosion::Add(std::string_view order, const FabricDemand& fabric) {
  const auto rows = Composition(order, fabric);
  const double kilograms = InMetres(fabric) ? fabric.quantity * fabric.weight : fabric.quantity;
  for (; !rows->Eof(); rows->Next()) {
    const double consumption = kilograms / 100 * rows->FieldByName("PERC").AsFloat();
    // The yarn list keeps feeders as a whole number, so that is what they are compared as.
    const bool known = yarns_.Locate("codigo;cor;lfa;roca",
                                     {rows->FieldByName("CODIGO"), rows->FieldByName("COR"), rows->FieldByName("LFA"),
                                      host::Value(rows->FieldByName("ROCA").AsInteger())});
    if (!known) {
      AppendYarn(*rows, fabric, consumption);
      continue;
    }
    yarns_.Edit();
    yarns_["Consumo"].Set(yarns_["Consumo"].AsFloat() + consumption);
    yarns_.Post();
  }
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
