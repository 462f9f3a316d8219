#include "orders/yarn_explosion.h"

#include <algorithm>

#include "host/decimal.h"
#include "weaving/units.h"
#include "weaving/yarn_colour.h"

namespace orders {
namespace {

bool InMetres(const FabricDemand& fabric) { return fabric.unit == weaving::kMetres; }

}  // namespace

YarnExplosion::YarnExplosion(host::Host& host, host::Dataset& yarns) : statements_(host), yarns_(yarns) {}

// Purchases are matched on the colour of the fabric, stock on the colour of the yarn: yarn is bought for a fabric
// colour and dyed later.
std::unique_ptr<host::TTIQuery> YarnExplosion::Composition(std::string_view order, const FabricDemand& fabric) const {
  return statements_.Open(R"(
SELECT COMP.CODIGO, MATERIAL.DESCRICAO, MATERIAL.UNIDADE, 
COMP.PERC, COMP.COR_I AS COR, CADCOR.DESCRICAO AS DESCCOR, 
COMP.LFA, COMP.ROCA, MATERIAL.NE, COMP.ORDEM, COMP.COMP_PONTO AS MILIMETRO, COMP.TENSAO, 
COMP.DIAMETRO, COMP.FINURA, COMP.ALIMENTADORES, MATERIAL.CONCENTRACAO AS DTEX, MATERIAL.GRAMATURA AS DEN,
MATERIAL.LARGURA AS TEX, 
(SELECT SUM(COI.QTDE - COI.QTDE_B) AS QTDE FROM {CO_ITEN} COI
WHERE COI.CODIGO = COMP.CODIGO 
AND COI.COR = COMP.COR 
AND COI.SITUACAO = 'A'
GROUP BY COI.CODIGO) AS QTDE_OC, 
(SELECT SUM(MATITEN.QTDE) FROM {MAT_ITEN} MATITEN
WHERE MATITEN.CODIGO = COMP.CODIGO 
AND MATITEN.COR = COMP.COR_I) AS QTDE, 
:remaining_consumption
FROM {COMP_MATERIAL} COMP 
LEFT JOIN {CADCOR} CADCOR ON (CADCOR.COR = COMP.COR_I)
LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = COMP.CODIGO)
WHERE COMP.MATERIAL = :fabric
AND COMP.COR = :colour
AND :coloured)",
                          {{"remaining_consumption", RemainingConsumption(order, InMetres(fabric))},
                           {"fabric", fabric.code},
                           {"colour", fabric.colour},
                           {"coloured", weaving::YarnColourGiven("COMP.")}});
}

// What the stored order has not yet written off, over all its fabrics that take the yarn. The unit of the fabric
// being exploded decides for all of them.
weaving::Sql YarnExplosion::RemainingConsumption(std::string_view order, bool metres) const {
  if (metres) {
    return statements_.Write(R"(
(SELECT SUM(((TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B)) * (COMPM.PERC /100) * CAST(MAT.PESO AS NUMERIC(9,5))) 
FROM {TECEL_ITEN} TECEL_ITEN
LEFT JOIN {COMP_MATERIAL} COMPM ON (TECEL_ITEN.CODIGO = COMPM.MATERIAL AND TECEL_ITEN.COR = COMPM.COR)
LEFT JOIN {MATERIAL} MAT ON (COMPM.MATERIAL = MAT.CODIGO)
WHERE TECEL_ITEN.NUMERO = :order
AND COMPM.CODIGO = COMP.CODIGO 
AND COMPM.COR_I = COMP.COR_I) AS CONSUMOTOT )",
                             {{"order", order}});
  }
  return statements_.Write(R"(
(SELECT SUM(((TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B) * COMPM.PERC) /100) 
FROM {TECEL_ITEN} TECEL_ITEN
LEFT JOIN {COMP_MATERIAL} COMPM ON (TECEL_ITEN.CODIGO = COMPM.MATERIAL AND TECEL_ITEN.COR = COMPM.COR)
WHERE TECEL_ITEN.NUMERO = :order
AND COMPM.CODIGO = COMP.CODIGO 
AND COMPM.COR_I = COMP.COR_I) AS CONSUMOTOT )",
                           {{"order", order}});
}

// The outer join finds no more than an inner one would, since a missing composition fails the condition. It makes the
// engine begin with the order's items: given the choice it reads every composition there is.
void YarnExplosion::Remember(std::string_view order) {
  const auto rows = statements_.Open(R"(
SELECT COMP.MATERIAL, COMP.COR, COMP.CODIGO, COMP.COR_I, COMP.LFA, COMP.ROCA, COMP.PERC
FROM {TECEL_ITEN} TECEL_ITEN
LEFT JOIN {COMP_MATERIAL} COMP ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)
WHERE TECEL_ITEN.NUMERO = :order
AND :coloured)",
                                     {{"order", order}, {"coloured", weaving::YarnColourGiven("COMP.")}});
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
