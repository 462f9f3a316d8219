// Rolls: the fabric that came into stock with them and the yarn that left it for them.
#include "app/books/checks.h"

namespace app::books {
namespace {

// What rolls and their yarn records expect of the stock, beside the movements that are there, by order and lot. A lot
// may hold one roll or all rolls of a fabric, as the mill forms its lots, so numbers and sums of the lot are compared.
// A movement that was taken back counts on both sides and cancels out.
//
// PECAS, FIOS: rolls and yarn records. ESPERADO: what they must have moved, in the stock's unit: rolls are recorded by
// weight and stocked in metres or pieces where the fabric is (by the weight per unit that its register has now).
// FOLGA: what rounding each roll to six decimals may make of that.
//
// A roll that is taken back leaves stock by its weight, also where it came in by metre or piece, and the difference
// stays in the lot. So what seems off is looked at once more: in a lot of such a fabric (its first movement brought
// something in, that of yarn took something out) each kilogram that left (SAIU) stands for 1 / PESO units.
std::string RollsAndMovements() {
  const std::string tolerance = std::string(kTolerance) + " + SUM(FOLGA)";
  return R"(
SELECT K.*, (SELECT COUNT(*) FROM {TECEL_ITEN} I WHERE I.NUMERO = K.NUMERO AND I.CODIGO = K.CODIGO) AS ITENS
FROM (
  SELECT NUMERO, CODIGO, COR, DEPOSITO, LOTE, MIN(PECA) AS PECA, SUM(PECAS) AS PECAS, SUM(FIOS) AS FIOS,
    SUM(ESPERADO) AS ESPERADO, SUM(ENTRADAS) AS ENTRADAS, SUM(SAIDAS) AS SAIDAS, SUM(MOVIDO) AS MOVIDO,
    SUM(SAIU) AS SAIU, MIN(ENTROU_EM) AS ENTROU_EM, MIN(SAIU_EM) AS SAIU_EM, )" +
         tolerance + R"( AS FOLGA
  FROM (
    SELECT B.NUMERO, B.CODIGO, B.COR, COALESCE(B.DEPOSITO, '') AS DEPOSITO, COALESCE(B.LOTE, '') AS LOTE,
      B.ORDEM AS PECA, 1 AS PECAS, 0 AS FIOS,
      IIF(UPPER(M.UNIDADE) IN ('PC', 'UN', 'MT') AND M.PESO > 0, B.QTDE / M.PESO, B.QTDE) AS ESPERADO,
      IIF(UPPER(M.UNIDADE) IN ('PC', 'UN', 'MT') AND M.PESO > 0, 0.000001e0 / M.PESO, 0e0) + 0.000001e0 AS FOLGA,
      0 AS ENTRADAS, 0 AS SAIDAS, 0e0 AS MOVIDO, 0e0 AS SAIU, NULL AS ENTROU_EM, NULL AS SAIU_EM
    FROM {TECELB} B LEFT JOIN {MATERIAL} M ON M.CODIGO = B.CODIGO
    UNION ALL
    SELECT NUMERO, CODIGO, COALESCE(COR, ''), COALESCE(DEPOSITO, ''), COALESCE(LOTE, ''),
      NULL, 0, 1, -QTDE, 0e0, 0, 0, 0e0, 0e0, NULL, NULL
    FROM {BAIXA_FIO}
    UNION ALL
    SELECT COALESCE(DOCUMENTO, ''), CODIGO, COR, DEPOSITO, LOTE,
      NULL, 0, 0, 0e0, 0e0, IIF(SAIDA = 'S', 0, 1), IIF(SAIDA = 'S', 1, 0), IIF(SAIDA = 'S', -QTDE, QTDE),
      IIF(SAIDA = 'S', QTDE, 0e0), IIF(SAIDA = 'S', NULL, ID), IIF(SAIDA = 'S', ID, NULL)
    FROM {MAT_MOV} WHERE TIPO_DOC = 'BT')
  GROUP BY NUMERO, CODIGO, COR, DEPOSITO, LOTE
  HAVING SUM(PECAS) - SUM(FIOS) <> SUM(ENTRADAS) - SUM(SAIDAS)
    OR SUM(ESPERADO) - SUM(MOVIDO) > )" +
         tolerance + R"(
    OR SUM(MOVIDO) - SUM(ESPERADO) > )" +
         tolerance + R"( + IIF(SUM(PECAS) = 0, 0.01e0 * SUM(SAIDAS), 0e0)) K
LEFT JOIN {MATERIAL} M ON M.CODIGO = K.CODIGO
WHERE K.PECAS - K.FIOS <> K.ENTRADAS - K.SAIDAS OR K.SAIDAS = 0 OR K.ENTROU_EM IS NULL
  OR K.SAIU_EM < K.ENTROU_EM OR M.PESO IS NULL
  OR M.PESO <= 0 OR UPPER(M.UNIDADE) NOT IN ('PC', 'UN', 'MT')
  OR ABS(K.MOVIDO - K.ESPERADO - K.SAIU * (1 / M.PESO - 1)) > K.FOLGA + 0.000001e0 * K.SAIDAS * (1 + 1 / M.PESO)
ORDER BY K.NUMERO, K.CODIGO, K.COR, K.DEPOSITO, K.LOTE)";
}

// A lot of an order that is off, told as fabric or as yarn.
class Finding {
 public:
  explicit Finding(const host::TTIQuery& row)
      : row_(row), fabric_(Number("PECAS") > 0 || (Number("FIOS") == 0 && Number("ITENS") > 0)) {}

  std::string Line() const { return fabric_ ? FabricLine() : YarnLine(); }

 private:
  std::int64_t Number(std::string_view column) const { return row_.FieldByName(column).AsInteger(); }
  std::string Text(std::string_view column) const { return row_.FieldByName(column).AsText(); }

  std::string Place() const {
    return ": ordem " + Text("NUMERO") + (fabric_ ? ", malha " : ", fio ") + Text("CODIGO") + ", cor " + Text("COR") +
           ", depósito " + Text("DEPOSITO") + ", lote " + Text("LOTE") +
           (Number("PECAS") == 1 ? ", peça " + Text("PECA") : "") + ": ";
  }

  std::string FabricLine() const {
    const std::int64_t rolls = Number("PECAS");
    const std::int64_t entries = Number("ENTRADAS") - Number("SAIDAS");
    const std::string counts = Counted(rolls, "peça", "peças") + ", " + Counted(entries, "entrada", "entradas") + ".";
    if (entries < rolls) return "Peça sem entrada no estoque" + Place() + counts;
    if (entries > rolls) return "Entrada de malha sem peça" + Place() + counts;
    return "Entrada de malha difere das peças" + Place() + "peças " + Shown(row_.FieldByName("ESPERADO")) +
           ", entradas " + Shown(row_.FieldByName("MOVIDO")) + ".";
  }

  std::string YarnLine() const {
    const std::int64_t records = Number("FIOS");
    const std::int64_t issues = Number("SAIDAS") - Number("ENTRADAS");
    const std::string counts = Counted(records, "baixa", "baixas") + ", " + Counted(issues, "saída", "saídas") + ".";
    if (issues < records) return "Fio baixado sem saída do estoque" + Place() + counts;
    if (issues > records) return "Saída de fio sem baixa" + Place() + counts;
    return "Saída de fio difere das baixas" + Place() + "baixas " + Shown(-row_.FieldByName("ESPERADO").AsFloat()) +
           ", saídas " + Shown(-row_.FieldByName("MOVIDO").AsFloat()) + ".";
  }

  const host::TTIQuery& row_;
  bool fabric_;
};

}  // namespace

Lines RollsAgainstMovements(firebird::Database& database) {
  const auto rows = database.Query(RollsAndMovements(), {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) lines.push_back(Finding(*rows).Line());
  return lines;
}

Lines YarnWithoutRoll(firebird::Database& database) {
  // Rolls and yarn records are matched by sorting both: looking each of millions of records up would take far longer.
  const auto rows = database.Query(R"(
SELECT P.NUMERO, P.ORDEM, P.MATERIAL, F.CODIGO, F.COR, F.DEPOSITO, F.LOTE, F.QTDE
FROM (
  SELECT NUMERO, ORDEM, MATERIAL
  FROM (
    SELECT NUMERO, ORDEM, CODIGO AS MATERIAL, 1 AS PECAS FROM {TECELB}
    UNION ALL
    SELECT NUMERO, ORDEM, MATERIAL, 0 FROM {BAIXA_FIO})
  GROUP BY NUMERO, ORDEM, MATERIAL
  HAVING SUM(PECAS) = 0) P
LEFT JOIN {BAIXA_FIO} F ON F.NUMERO = P.NUMERO AND F.ORDEM IS NOT DISTINCT FROM P.ORDEM
  AND F.MATERIAL IS NOT DISTINCT FROM P.MATERIAL
ORDER BY P.NUMERO, P.ORDEM, F.CODIGO, F.COR, F.DEPOSITO, F.LOTE)",
                                   {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    const auto text = [&](std::string_view column) { return rows->FieldByName(column).AsText(); };
    lines.push_back("Baixa de fio sem a sua peça: ordem " + text("NUMERO") + ", peça " + text("ORDEM") + ", malha " +
                    text("MATERIAL") + ", fio " + text("CODIGO") + ", cor " + text("COR") + ", depósito " +
                    text("DEPOSITO") + ", lote " + text("LOTE") + ": " + Shown(rows->FieldByName("QTDE")) + ".");
  }
  return lines;
}

Lines DefectsWithoutRoll(firebird::Database& database) {
  const auto rows = database.Query(R"(
SELECT D.NUMERO, D.ROLO, D.ARTIGO, D.CODIGO, D.QUANT
FROM {DEF_MOV} D LEFT JOIN {TECELB} B ON B.NUMERO = D.NUMERO AND B.ORDEM = D.ROLO AND B.CODIGO = D.ARTIGO
WHERE D.TIPO = 'T' AND B.NUMERO IS NULL
ORDER BY D.NUMERO, D.ROLO, D.ARTIGO, D.MOV)",
                                   {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    const auto text = [&](std::string_view column) { return rows->FieldByName(column).AsText(); };
    lines.push_back("Defeito sem a sua peça: ordem " + text("NUMERO") + ", peça " + text("ROLO") + ", malha " +
                    text("ARTIGO") + ", defeito " + text("CODIGO") + ": " + Shown(rows->FieldByName("QUANT")) + ".");
  }
  return lines;
}

}  // namespace app::books
