#include "orders/roll_labels.h"

#include <algorithm>

#include "host/text.h"

namespace orders {
namespace {

constexpr std::size_t kOrderWidth = 6;
constexpr std::size_t kSequenceWidth = 3;

// What follows the order's number in a lot; 0 for what is no sequence, such as a sales order's number.
std::int64_t SequenceOf(std::string_view text) {
  std::int64_t sequence = 0;
  for (const char digit : text.substr(0, kSequenceWidth)) {
    if (digit < '0' || digit > '9') return 0;
    sequence = sequence * 10 + (digit - '0');
  }
  return sequence;
}

}  // namespace

RollLabels::RollLabels(host::Host& host) : statements_(host) {}

bool RollLabels::FitsLabel(std::string_view order) { return host::Length(order) == kOrderWidth; }

std::optional<LabelledItem> RollLabels::StoredItem(std::string_view order, std::string_view code,
                                                   std::string_view colour) const {
  const auto row = statements_.Open(R"(
SELECT TECEL.DEPOSITO, TECEL_ITEN.QTDE_B
FROM {TECEL} TECEL
INNER JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)
WHERE TECEL.NUMERO = :order
AND TECEL_ITEN.CODIGO = :code
AND TECEL_ITEN.COR = :colour)",
                                    {{"order", order}, {"code", code}, {"colour", colour}});
  if (row->IsEmpty()) return std::nullopt;
  return LabelledItem{.order = std::string(order),
                      .code = std::string(code),
                      .colour = std::string(colour),
                      .warehouse = row->FieldByName("DEPOSITO").AsText(),
                      .written_off = row->FieldByName("QTDE_B").AsFloat()};
}

// The WHERE clause of an item's labels. Lots of other lengths that begin with the number are rolls that were never
// labelled before.
weaving::Sql RollLabels::LabelsOf(const LabelledItem& item) const {
  return statements_.Write(R"(
WHERE UDF_COPY(LOTE,1,6) = :order
AND UDF_LEN(LOTE) = 9
AND CODIGO = :code
AND COR = :colour)",
                           {{"order", item.order}, {"code", item.code}, {"colour", item.colour}});
}

bool RollLabels::Exist(const LabelledItem& item) const {
  const auto rows = statements_.Open(R"(
SELECT CODIGO
FROM {MAT_ITEN}
:of_item)",
                                     {{"of_item", LabelsOf(item)}});
  return !rows->IsEmpty();
}

std::optional<std::string> RollLabels::LotWithStock(const LabelledItem& item) const {
  const auto rows = statements_.Open(R"(
SELECT LOTE
FROM {MAT_ITEN}
:of_item
AND QTDE <> 0)",
                                     {{"of_item", LabelsOf(item)}});
  if (rows->IsEmpty()) return std::nullopt;
  return rows->FieldByName("LOTE").AsText();
}

void RollLabels::Delete(const LabelledItem& item) {
  statements_.Execute(R"(
DELETE FROM {MAT_ITEN}
:of_item)",
                      {{"of_item", LabelsOf(item)}});
}

// The highest as text is not always the highest number: a roll that came back without a label may have a shorter lot
// ("0001239" is above "000123010"), and a lot may go on with a sales order's number. No two labels of an order may
// share a lot, so what the labels themselves have reached counts as well.
std::int64_t RollLabels::LastSequence(std::string_view order) const {
  const auto highest = statements_.Open(R"(
SELECT MAX(UDF_COPY(LOTE,7,3)) AS SEQ
FROM {MAT_ITEN}
WHERE LOTE LIKE :lots)",
                                        {{"lots", std::string(order) + "%"}});
  std::int64_t last = SequenceOf(highest->FieldByName("SEQ").AsText());
  const auto labels = statements_.Open(R"(
SELECT UDF_COPY(LOTE,7,3) AS SEQ
FROM {MAT_ITEN}
WHERE UDF_COPY(LOTE,1,6) = :order
AND UDF_LEN(LOTE) = 9)",
                                       {{"order", order}});
  for (; !labels->Eof(); labels->Next()) last = std::max(last, SequenceOf(labels->FieldByName("SEQ").AsText()));
  return last;
}

void RollLabels::Insert(const LabelledItem& item, std::int64_t last, int count) {
  std::vector<weaving::Sql> statements;
  for (int label = 1; label <= count; ++label) statements.push_back(NewLabel(item, last + label));
  statements_.ExecuteTogether(statements);
}

weaving::Sql RollLabels::NewLabel(const LabelledItem& item, std::int64_t sequence) const {
  const std::string digits = std::to_string(sequence);
  const std::string lot = item.order + std::string(kSequenceWidth - digits.size(), '0') + digits;
  return statements_.Write(R"(
INSERT INTO {MAT_ITEN}
(QTDE, QTDE_R, QTD_MINIMA, COR, LOTE, CODIGO, DEPOSITO, PRECO_MED, LOCAL, BARRA, QTD_MAXIMA, LARGURA,
QUALIDADE)
VALUES
(0, 0, 0,
:colour,
:lot,
:code,
:warehouse,
0,
'',
'',
0, 0,
'1'))",
                           {{"colour", item.colour}, {"lot", lot}, {"code", item.code}, {"warehouse", item.warehouse}});
}

}  // namespace orders
