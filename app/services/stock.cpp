#include "app/services/stock.h"

#include <cmath>
#include <vector>

#include "host/decimal.h"
#include "host/errors.h"

namespace app::services {
namespace {

constexpr int kQuantityDecimals = 6;  // what the tables keep

// A balance may end at -0.01: a reversal compares at two decimals what it takes out exactly. Half a unit of the last
// decimal kept absorbs the crumbs of binary arithmetic around that limit.
//
// The averages read the values from before the update, as SQL prescribes for the right sides of SET.
constexpr std::string_view kMoveSql = R"(EXECUTE BLOCK (
  P_CODIGO VARCHAR(60) = ?, P_COR VARCHAR(60) = ?, P_LOTE VARCHAR(60) = ?, P_DEPOSITO VARCHAR(60) = ?,
  P_QTDE DOUBLE PRECISION = ?, P_SAIDA VARCHAR(1) = ?, P_PRECO DOUBLE PRECISION = ?, P_CUSTO DOUBLE PRECISION = ?,
  P_LOCAL VARCHAR(200) = ?, P_DOCUMENTO VARCHAR(60) = ?, P_TIPO_DOC VARCHAR(60) = ?, P_CLIENTE VARCHAR(60) = ?,
  P_MAQUINA VARCHAR(60) = ?, P_FUNCIONARIO VARCHAR(60) = ?, P_DATA DATE = ?, P_USUARIO VARCHAR(100) = ?,
  P_BAIXADO VARCHAR(60) = ?, P_ATIVO VARCHAR(60) = ?, P_COMPLEMENTO VARCHAR(200) = ?, P_TIPO_MOV VARCHAR(60) = ?,
  P_ORDEM INTEGER = ?, P_ESTORNO VARCHAR(1) = ?, P_MUDA_SALDO INTEGER = ?, P_GRAVA_MOVIMENTO INTEGER = ?)
RETURNS (FEITO INTEGER, SALDO DOUBLE PRECISION) AS
DECLARE DIFERENCA DOUBLE PRECISION;
BEGIN
  FEITO = 1;
  SALDO = 0;
  DIFERENCA = IIF(P_SAIDA = 'S', -P_QTDE, P_QTDE);
  IF (P_MUDA_SALDO = 1) THEN
  BEGIN
    UPDATE {MAT_ITEN} SET
      QTDE = QTDE + :DIFERENCA,
      PRECO_MED = CASE WHEN :P_SAIDA = 'S' OR :P_PRECO <= 0 THEN PRECO_MED
                       WHEN QTDE <= 0 THEN :P_PRECO
                       ELSE (QTDE * PRECO_MED + :P_QTDE * :P_PRECO) / (QTDE + :P_QTDE) END,
      LOCAL = IIF(:P_SAIDA = 'S' OR :P_LOCAL = '', LOCAL, :P_LOCAL)
    WHERE CODIGO = :P_CODIGO AND COR = :P_COR AND DEPOSITO = :P_DEPOSITO AND LOTE = :P_LOTE
      AND (:P_SAIDA <> 'S' OR QTDE + :DIFERENCA > -0.0100005);
    IF (ROW_COUNT = 0) THEN
    BEGIN
      SELECT QTDE FROM {MAT_ITEN}
      WHERE CODIGO = :P_CODIGO AND COR = :P_COR AND DEPOSITO = :P_DEPOSITO AND LOTE = :P_LOTE INTO :SALDO;
      IF (ROW_COUNT = 1 OR DIFERENCA <= -0.0100005) THEN
        FEITO = 0;
      ELSE
        INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QTDE, PRECO_MED, LOCAL)
        VALUES (:P_CODIGO, :P_COR, :P_DEPOSITO, :P_LOTE, :DIFERENCA,
          IIF(:P_SAIDA = 'S' OR :P_PRECO < 0, 0, :P_PRECO), IIF(:P_SAIDA = 'S', '', :P_LOCAL));
    END
  END
  IF (P_GRAVA_MOVIMENTO = 1 AND FEITO = 1) THEN
    INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, CLIENTE, MAQUINA, FUNCIONARIO, DATA,
      QTDE, SAIDA, USUARIO, PRECO, CUSTO, LOCAL, BAIXADO, ATIVO, COMPLEMENTO, TIPO_MOV, ORDEM,
      ESTORNO)
    VALUES (:P_CODIGO, :P_COR, :P_LOTE, :P_DEPOSITO, :P_DOCUMENTO, :P_TIPO_DOC, :P_CLIENTE, :P_MAQUINA,
      :P_FUNCIONARIO, :P_DATA, :P_QTDE, :P_SAIDA, :P_USUARIO, :P_PRECO, :P_CUSTO, :P_LOCAL, :P_BAIXADO, :P_ATIVO,
      :P_COMPLEMENTO, :P_TIPO_MOV, :P_ORDEM, :P_ESTORNO);
  SUSPEND;
END)";

constexpr std::string_view kOfRollSql = R"(
SELECT TIPO_MOV, CODIGO, COR, LOTE, DEPOSITO, QTDE, SAIDA, PRECO, ESTORNO, MOMENTO FROM {MAT_MOV}
WHERE DOCUMENTO = ? AND ORDEM = ? AND TIPO_DOC = 'BT' ORDER BY ID)";

constexpr std::int64_t kUniqueKeyViolation = 335544665;

std::string Shown(double quantity) {
  if (!std::isfinite(quantity)) return "que não é um número";
  return host::FormatNumber("0.######", quantity, ',');
}

}  // namespace

std::string StockMovement::CodigoTipoMovEstoque(int ordinal) {
  switch (ordinal) {
    case host::kMovementInbound:
      return "TECENT";
    case host::kMovementOutbound:
      return "TECSAI";
    default:
      throw host::InputError("Tipo de movimento de estoque " + std::to_string(ordinal) + " desconhecido.");
  }
}

double StockMovement::Balance() const {
  const auto rows =
      database_.Query("SELECT QTDE FROM {MAT_ITEN} WHERE CODIGO = ? AND COR = ? AND DEPOSITO = ? AND LOTE = ?",
                      {Material, Cor, Deposito, Lote});
  return rows->FieldByName("QTDE").AsFloat();
}

void StockMovement::Refuse(const std::string& what, double balance) const {
  throw host::DatabaseError(what + ": material " + Material + ", cor " + Cor + ", lote " + Lote + ", depósito " +
                                Deposito + ", saldo " + Shown(balance) + ", quantidade " + Shown(Quantidade) + ".",
                            0, "");
}

void StockMovement::CheckNumbers() {
  if (!std::isfinite(Quantidade) || host::RoundTo(Quantidade, kQuantityDecimals) <= 0) {
    Refuse("Quantidade inválida no movimento de estoque", Balance());
  }
  if (!std::isfinite(PrecoUnitario) || !std::isfinite(Custo)) {
    Refuse("Preço inválido no movimento de estoque", Balance());
  }
}

void StockMovement::MovimentaEstoqueMaterial(bool update_balance, bool write_movement) {
  CheckNumbers();
  const std::vector<host::Value> values = {Material,
                                           Cor,
                                           Lote,
                                           Deposito,
                                           host::RoundTo(Quantidade, kQuantityDecimals),
                                           Saida ? "S" : "N",
                                           PrecoUnitario,
                                           Custo,
                                           Local,
                                           Documento,
                                           TipoDocumento,
                                           Cliente,
                                           Maquina,
                                           Funcionario,
                                           Data,
                                           Usuario,
                                           Baixado,
                                           Ativo,
                                           Complemento,
                                           TipoMovimento,
                                           Ordem,
                                           Estorno ? "S" : "N",
                                           update_balance ? 1 : 0,
                                           write_movement ? 1 : 0};
  std::unique_ptr<host::TTIQuery> result;
  try {
    result = database_.Query(kMoveSql, values);
  } catch (const host::DatabaseError& error) {
    if (error.Code() != kUniqueKeyViolation) throw;
    // Another station opened the same lot at the same moment; its row is there now.
    result = database_.Query(kMoveSql, values);
  }
  if (result->FieldByName("FEITO").AsInteger() == 0) {
    Refuse("Saldo de estoque insuficiente", result->FieldByName("SALDO").AsFloat());
  }
}

std::vector<host::LedgerRow> MovementsOfRoll(firebird::Database& database, std::string_view order, int roll) {
  // Movements of no roll have the number 0, whatever their document.
  if (roll <= 0) return {};
  const auto rows = database.Query(kOfRollSql, {order, roll});
  std::vector<host::LedgerRow> movements;
  for (; !rows->Eof(); rows->Next()) {
    movements.push_back(
        {.movement_type = rows->FieldByName("TIPO_MOV").AsText(),
         .material = rows->FieldByName("CODIGO").AsText(),
         .colour = rows->FieldByName("COR").AsText(),
         .lot = rows->FieldByName("LOTE").AsText(),
         .deposit = rows->FieldByName("DEPOSITO").AsText(),
         .quantity = rows->FieldByName("QTDE").AsFloat(),
         .out = rows->FieldByName("SAIDA").AsText() == "S",
         .price = rows->FieldByName("PRECO").AsFloat(),
         .undoes = rows->FieldByName("ESTORNO").AsText() == "S",
         .moment = host::DateTime::FromIso(rows->FieldByName("MOMENTO").AsText()).value_or(host::DateTime())});
  }
  return movements;
}

}  // namespace app::services
