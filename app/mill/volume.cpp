#include "app/mill/volume.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "app/mill/fill.h"
#include "app/services/numbering.h"
#include "host/errors.h"

namespace app::mill {
namespace {

// A fabric in a colour at a mill that weaves it, with all that an order names.
struct Work {
  std::string fabric;
  std::string colour;
  std::string mill;
  std::string yarn_deposit;
  double cost = 0;
};

// Fabrics in kilograms only: there one unit is one kilogram in every table.
constexpr std::string_view kWorkSql =
    R"(SELECT DISTINCT PRECO.CODIGO, COMP.COR, PRECO.CODCLI, DEPOSITO.CODIGO AS DEPOSITO,
  PRECO.CUSTO
FROM {CADCORTI} PRECO
INNER JOIN {MATERIAL} MALHA ON MALHA.CODIGO = PRECO.CODIGO
INNER JOIN {COMP_MATERIAL} COMP ON COMP.MATERIAL = PRECO.CODIGO
INNER JOIN {DEPOSITO} DEPOSITO ON DEPOSITO.CODCLI = PRECO.CODCLI AND DEPOSITO.PRIORIDADE = '5'
WHERE PRECO.TIPO = 'C' AND PRECO.COR = '0' AND PRECO.CUSTO > 0 AND MALHA.UNIDADE = 'KG' AND COMP.KG_ROLO > 0
  AND NOT EXISTS (SELECT 1 FROM {COMP_MATERIAL} MARCA
    WHERE MARCA.MATERIAL = COMP.MATERIAL AND MARCA.COR = COMP.COR AND COALESCE(MARCA.COR_I, '*') LIKE '%*%')
ORDER BY PRECO.CODIGO, COMP.COR, PRECO.CODCLI)";

// One order of P_PECAS rolls and its whole yarn, on the server so that no row travels. A roll's weight swings by up to
// a tenth around the fabric's own, in a fixed pattern, so that two runs give the same mill. An order with P_ABERTA is
// half woven: its other half is still ordered, reserved and in stock.
constexpr std::string_view kOrderSql = R"(EXECUTE BLOCK (
  P_NUMERO VARCHAR(6) = ?, P_CODIGO VARCHAR(15) = ?, P_COR VARCHAR(6) = ?, P_MALHARIA VARCHAR(6) = ?,
  P_DEP_FIO VARCHAR(6) = ?, P_DEP_MALHA VARCHAR(6) = ?, P_CUSTO DOUBLE PRECISION = ?, P_MAQUINA VARCHAR(6) = ?,
  P_FUNCIONARIO VARCHAR(5) = ?, P_TURNO VARCHAR(2) = ?, P_PECAS INTEGER = ?, P_ABERTA INTEGER = ?,
  P_DIA DATE = ?, P_PASSO DOUBLE PRECISION = ?)
AS
DECLARE KG_ROLO DOUBLE PRECISION;
DECLARE I INTEGER;
DECLARE PESO DOUBLE PRECISION;
DECLARE TECIDO DOUBLE PRECISION = 0;
DECLARE FATOR INTEGER;
DECLARE FIO VARCHAR(15);
DECLARE COR_FIO VARCHAR(6);
DECLARE PERC DOUBLE PRECISION;
DECLARE FORNECEDOR VARCHAR(6);
DECLARE PRECO DOUBLE PRECISION;
DECLARE LOTE VARCHAR(32);
DECLARE USADO DOUBLE PRECISION;
DECLARE QUANTIDADE DOUBLE PRECISION;
DECLARE CUSTO_MALHA DOUBLE PRECISION;
DECLARE DIA DATE;
DECLARE MOMENTO TIMESTAMP;
DECLARE PAGO VARCHAR(1);
DECLARE NOTA VARCHAR(6);
BEGIN
  FATOR = IIF(P_ABERTA = 1, 2, 1);
  SELECT MAX(KG_ROLO) FROM {COMP_MATERIAL} WHERE MATERIAL = :P_CODIGO AND COR = :P_COR INTO :KG_ROLO;
  MOMENTO = DATEADD(7 HOUR TO CAST(P_DIA AS TIMESTAMP));

  I = 1;
  WHILE (I <= P_PECAS) DO
  BEGIN
    TECIDO = TECIDO + ROUND(KG_ROLO * (1 + (MOD(I * 37, 41) - 20) / 200e0), 3);
    I = I + 1;
  END

  INSERT INTO {TECEL} (NUMERO, MALHARIA, PERIODO, OBSERVACAO, DT_INICIO, FICHA, MAQUINA, FLUXO, RPM, TPONTO, SITUACAO,
    DEPOSITO)
  VALUES (:P_NUMERO, :P_MALHARIA, '', '', :P_DIA, '', :P_MAQUINA, '', 24, 2.7, 'A', :P_DEP_MALHA);
  INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR, PEDIDO, CUSTO, QTDE, BAIXADA, QTDE_B, CICLOS, OBS)
  VALUES (:P_NUMERO, :P_CODIGO, :P_COR, '', :P_CUSTO, :TECIDO * :FATOR, IIF(:P_ABERTA = 1, '', 'S'), :TECIDO, 0, '');
  INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, TEXTO, OPERACAO, CHAVE)
  VALUES ('ADMIN', :MOMENTO, 'ORDEM DE TECELAGEM', 'INCLUSAO DA ORDEM NR. ' || :P_NUMERO, 0, :P_NUMERO);

  CUSTO_MALHA = P_CUSTO;
  FOR SELECT C.CODIGO, C.COR_I, SUM(C.PERC), MAX(M.CODCLI), MAX(M.REPOSICAO)
    FROM {COMP_MATERIAL} C
    INNER JOIN {MATERIAL} M ON M.CODIGO = C.CODIGO
    WHERE C.MATERIAL = :P_CODIGO AND C.COR = :P_COR
    GROUP BY C.CODIGO, C.COR_I
    INTO :FIO, :COR_FIO, :PERC, :FORNECEDOR, :PRECO
  DO
  BEGIN
    LOTE = LEFT(COALESCE(FORNECEDOR, '') || '00000', 5) || 'V' || P_NUMERO;
    CUSTO_MALHA = CUSTO_MALHA + PERC / 100 * PRECO;
    USADO = 0;
    I = 1;
    WHILE (I <= P_PECAS) DO
    BEGIN
      USADO = USADO + ROUND(ROUND(KG_ROLO * (1 + (MOD(I * 37, 41) - 20) / 200e0), 3) * PERC / 100, 3);
      I = I + 1;
    END
    INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, CLIENTE, MAQUINA, FUNCIONARIO, DATA, QTDE,
      SAIDA, USUARIO, PRECO, CUSTO, LOCAL, BAIXADO, ATIVO, COMPLEMENTO, TIPO_MOV, MOMENTO)
    VALUES (:FIO, :COR_FIO, :LOTE, :P_DEP_FIO, 'COMPRA', 'NF', :FORNECEDOR, '', '', :P_DIA, :USADO * :FATOR,
      'N', 'ADMIN', :PRECO, :PRECO, '', '0', '1', '', 'COMPRA', :MOMENTO);
    INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QTDE, PRECO_MED, LOCAL)
    VALUES (:FIO, :COR_FIO, :P_DEP_FIO, :LOTE, :USADO * (:FATOR - 1), :PRECO, '');
    INSERT INTO {MAT_RESERVA} (CODIGO, COR, LOTE, DEPOSITO, NUMERO, QTDE, NOME, OBS, QTDE_B, TIPO)
    VALUES (:FIO, :COR_FIO, :LOTE, :P_DEP_FIO, :P_NUMERO, :USADO * (:FATOR - 1), '', '', :USADO, 'T');
  END

  I = 1;
  WHILE (I <= P_PECAS) DO
  BEGIN
    PESO = ROUND(KG_ROLO * (1 + (MOD(I * 37, 41) - 20) / 200e0), 3);
    DIA = DATEADD(CAST(FLOOR((I - 1) * P_PASSO) AS INTEGER) DAY TO P_DIA);
    MOMENTO = DATEADD(7 HOUR TO CAST(DIA AS TIMESTAMP));
    PAGO = IIF(DIA < CURRENT_DATE - 30, 'S', NULL);
    NOTA = LPAD(MOD(DIA - DATE '2000-01-01', 100000), 5, '0') || MOD(P_NUMERO, 10);
    FOR SELECT C.CODIGO, C.COR_I, SUM(C.PERC), MAX(M.CODCLI), MAX(M.REPOSICAO)
      FROM {COMP_MATERIAL} C
      INNER JOIN {MATERIAL} M ON M.CODIGO = C.CODIGO
      WHERE C.MATERIAL = :P_CODIGO AND C.COR = :P_COR
      GROUP BY C.CODIGO, C.COR_I
      INTO :FIO, :COR_FIO, :PERC, :FORNECEDOR, :PRECO
    DO
    BEGIN
      LOTE = LEFT(COALESCE(FORNECEDOR, '') || '00000', 5) || 'V' || P_NUMERO;
      QUANTIDADE = ROUND(PESO * PERC / 100, 3);
      INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, CLIENTE, MAQUINA, FUNCIONARIO, DATA,
        QTDE, SAIDA, USUARIO, PRECO, CUSTO, LOCAL, BAIXADO, ATIVO, COMPLEMENTO, TIPO_MOV, MOMENTO,
        ORDEM, ESTORNO)
      VALUES (:FIO, :COR_FIO, :LOTE, :P_DEP_FIO, :P_NUMERO, 'BT', :P_MALHARIA, :P_MAQUINA, :P_FUNCIONARIO, :DIA,
        :QUANTIDADE, 'S', 'ADMIN', :PRECO, :PRECO, '', '0', '1', '', 'TECSAI', :MOMENTO, :I, 'N');
      INSERT INTO {BAIXA_FIO} (CODIGO, DOCTO, NUMERO, QTDE, LOTE, COR, DEPOSITO, ORDEM, MATERIAL)
      VALUES (:FIO, :P_NUMERO, :P_NUMERO, :QUANTIDADE, :LOTE, :COR_FIO, :P_DEP_FIO, :I, :P_CODIGO);
    END
    LOTE = P_NUMERO || I;
    INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, CLIENTE, MAQUINA, FUNCIONARIO, DATA, QTDE,
      SAIDA, USUARIO, PRECO, CUSTO, LOCAL, BAIXADO, ATIVO, COMPLEMENTO, TIPO_MOV, MOMENTO, ORDEM,
      ESTORNO)
    VALUES (:P_CODIGO, :P_COR, :LOTE, :P_DEP_MALHA, :P_NUMERO, 'BT', :P_MALHARIA, :P_MAQUINA, :P_FUNCIONARIO, :DIA,
      :PESO, 'N', 'ADMIN', :CUSTO_MALHA, :CUSTO_MALHA, '', '0', '1', '', 'TECENT', :MOMENTO, :I, 'N');
    INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QTDE, PRECO_MED, LOCAL)
    VALUES (:P_CODIGO, :P_COR, :P_DEP_MALHA, :LOTE, :PESO, :CUSTO_MALHA, '');
    INSERT INTO {TECELB} (NUMERO, CODIGO, ORDEM, DT_LAN, QTDE, NF_RET, DEPOSITO, MAQUINA, FUNCIONARIO, COR, TURNO,
      NF_COB, QTDE_R, LOTE, LOCAL, PEDIDO, PAGO, DT_PAGTO)
    VALUES (:P_NUMERO, :P_CODIGO, :I, :DIA, :PESO, :NOTA, :P_DEP_MALHA, :P_MAQUINA, :P_FUNCIONARIO, :P_COR, :P_TURNO,
      '', 1, :LOTE, '', '', :PAGO, IIF(:PAGO = 'S', :DIA + 30, NULL));
    INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, TEXTO, OPERACAO, CHAVE)
    VALUES ('ADMIN', :MOMENTO, 'BAIXAS DA TECELAGEM',
      'BAIXA DE LOTE NR.: ' || :P_NUMERO || ' CODIGO: ' || :P_CODIGO || ' QUANT: ' || CAST(:PESO AS NUMERIC(15,3)), 0,
      :P_NUMERO);
    I = I + 1;
  END
END)";

std::vector<Work> ReadWork(firebird::Database& database) {
  std::vector<Work> found;
  const auto rows = database.Query(kWorkSql, {});
  for (; !rows->Eof(); rows->Next()) {
    const auto text = [&](std::string_view name) { return rows->FieldByName(name).AsText(); };
    found.push_back(
        {text("CODIGO"), text("COR"), text("CODCLI"), text("DEPOSITO"), rows->FieldByName("CUSTO").AsFloat()});
  }
  if (found.empty()) throw host::InputError("Nenhuma malha tem preço, composição e depósito de fios na malharia.");
  return found;
}

std::vector<std::string> ReadCodes(firebird::Database& database, std::string_view sql, std::string_view missing) {
  std::vector<std::string> codes;
  const auto rows = database.Query(sql, {});
  for (; !rows->Eof(); rows->Next()) codes.push_back(rows->FieldByName("CODIGO").AsText());
  if (codes.empty()) throw host::InputError(std::string(missing));
  return codes;
}

host::Date Today(firebird::Database& database) {
  return database.Query("SELECT CURRENT_DATE AS HOJE FROM RDB$DATABASE", {})->FieldByName("HOJE").AsDate();
}

void CheckOptions(const VolumeOptions& options) {
  if (options.rolls < 1 || options.rolls_per_order < 1 || options.rolls_per_day < 1 || options.open_orders < 0) {
    throw host::InputError("As quantidades do volume precisam ser positivas.");
  }
}

template <typename T>
const T& Turn(const std::vector<T>& list, int position) {
  return list[static_cast<std::size_t>(position) % list.size()];
}

}  // namespace

VolumeResult GenerateVolume(firebird::Database& database, const VolumeOptions& options) {
  CheckOptions(options);
  const std::vector<Work> work = ReadWork(database);
  const auto machines = ReadCodes(database, "SELECT MAQUINA AS CODIGO FROM {MAQUINA} ORDER BY 1", "Nenhuma máquina.");
  const auto people = ReadCodes(database, "SELECT CODIGO FROM {PESSOAL} ORDER BY 1", "Nenhum funcionário.");
  const auto shifts = ReadCodes(database, "SELECT TURNO AS CODIGO FROM {TURNO} ORDER BY 1", "Nenhum turno.");
  const auto deposits =
      ReadCodes(database, "SELECT CODIGO FROM {DEPOSITO} WHERE CODCLI IS NULL OR CODCLI = '' ORDER BY 1",
                "Nenhum depósito próprio.");
  const std::string& fabric_deposit = deposits.size() > 1 ? deposits[1] : deposits[0];

  // As many orders run at the same time as the mill has work for, so that each day's rolls come from several orders.
  const auto parallel = static_cast<int>(work.size());
  const double days_per_roll = static_cast<double>(parallel) / options.rolls_per_day;
  const host::Date last_day = options.last_day.IsZero() ? Today(database) : options.last_day;
  const auto days = static_cast<int>(options.rolls / options.rolls_per_day);
  const auto orders = static_cast<int>((options.rolls + options.rolls_per_order - 1) / options.rolls_per_order);

  services::Numbering numbering(database);
  const std::string orders_table = database.PhysicalName("TECEL");
  VolumeResult result;
  while (result.rolls < options.rolls) {
    const auto rolls = static_cast<int>(std::min<std::int64_t>(options.rolls_per_order, options.rolls - result.rolls));
    const Work& item = Turn(work, result.orders);
    const bool open = orders - result.orders <= options.open_orders;
    const auto span = static_cast<int>(rolls * days_per_roll);
    const auto offset = static_cast<int>(result.rolls / options.rolls_per_day) - days - span;
    const std::string number = numbering.Next(orders_table, "NUMERO", 6);
    database.BeginAction();
    try {
      database.Execute(kOrderSql,
                       {number, item.fabric, item.colour, item.mill, item.yarn_deposit, fabric_deposit, item.cost,
                        Turn(machines, result.orders), Turn(people, result.orders), Turn(shifts, result.orders), rolls,
                        open ? 1 : 0, last_day.AddDays(offset), days_per_roll});
    } catch (...) {
      database.EndAction(firebird::Database::Outcome::kFailed);
      throw;
    }
    database.EndAction(firebird::Database::Outcome::kOk);
    if (result.orders++ == 0) result.first_order = number;
    result.last_order = number;
    result.rolls += rolls;
  }
  return result;
}

VolumeResult GenerateVolumeFast(const firebird::ConnectOptions& options, const VolumeOptions& volume) {
  VolumeResult result;
  FillAtOnce(options, FillStart::kExistingFile,
             [&](firebird::Database& database) { result = GenerateVolume(database, volume); });
  return result;
}

}  // namespace app::mill
