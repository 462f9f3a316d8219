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

RollLabels::RollLabels(host::Host& host) : database_(host.GetTabela().IBDatabase()), words_(host.GetFuncoes()) {}

bool RollLabels::FitsLabel(std::string_view order) { return host::Length(order) == kOrderWidth; }

std::optional<LabelledItem> RollLabels::StoredItem(std::string_view order, std::string_view code,
                                                   std::string_view colour) const {
  const Words& w = words_;
  const auto row =
      OpenQuery(database_, {"SELECT TECEL.DEPOSITO, TECEL_ITEN.QTDE_B", "FROM " + w.Named("TECEL"),
                            "INNER JOIN " + w.Named("TECEL_ITEN") + " ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)",
                            "WHERE TECEL.NUMERO = " + w.Text(order), "AND TECEL_ITEN.CODIGO = " + w.Text(code),
                            "AND TECEL_ITEN.COR = " + w.Text(colour)});
  if (row->IsEmpty()) return std::nullopt;
  return LabelledItem{.order = std::string(order),
                      .code = std::string(code),
                      .colour = std::string(colour),
                      .warehouse = row->FieldByName("DEPOSITO").AsText(),
                      .written_off = row->FieldByName("QTDE_B").AsFloat()};
}

// The WHERE clause of an item's labels. Lots of other lengths that begin with the number are rolls that were never
// labelled before.
std::string RollLabels::LabelsOf(const LabelledItem& item) const {
  const Words& w = words_;
  return "WHERE UDF_COPY(LOTE,1,6) = " + w.Text(item.order) +
         "\nAND UDF_LEN(LOTE) = 9\nAND CODIGO = " + w.Text(item.code) + "\nAND COR = " + w.Text(item.colour);
}

bool RollLabels::Exist(const LabelledItem& item) const {
  return !OpenQuery(database_, {"SELECT CODIGO", "FROM " + words_.Table("MAT_ITEN"), LabelsOf(item)})->IsEmpty();
}

std::optional<std::string> RollLabels::LotWithStock(const LabelledItem& item) const {
  const auto rows =
      OpenQuery(database_, {"SELECT LOTE", "FROM " + words_.Table("MAT_ITEN"), LabelsOf(item), "AND QTDE <> 0"});
  if (rows->IsEmpty()) return std::nullopt;
  return rows->FieldByName("LOTE").AsText();
}

void RollLabels::Delete(const LabelledItem& item) {
  Execute(database_, {"DELETE FROM " + words_.Table("MAT_ITEN"), LabelsOf(item)});
}

// The highest as text is not always the highest number: a roll that came back without a label may have a shorter lot
// ("0001239" is above "000123010"), and a lot may go on with a sales order's number. No two labels of an order may
// share a lot, so what the labels themselves have reached counts as well.
std::int64_t RollLabels::LastSequence(std::string_view order) const {
  const Words& w = words_;
  const auto highest = OpenQuery(database_, {"SELECT MAX(UDF_COPY(LOTE,7,3)) AS SEQ", "FROM " + w.Table("MAT_ITEN"),
                                             "WHERE LOTE LIKE " + w.Text(std::string(order) + "%")});
  std::int64_t last = SequenceOf(highest->FieldByName("SEQ").AsText());
  const auto labels = OpenQuery(database_, {"SELECT UDF_COPY(LOTE,7,3) AS SEQ", "FROM " + w.Table("MAT_ITEN"),
                                            "WHERE UDF_COPY(LOTE,1,6) = " + w.Text(order), "AND UDF_LEN(LOTE) = 9"});
  for (; !labels->Eof(); labels->Next()) last = std::max(last, SequenceOf(labels->FieldByName("SEQ").AsText()));
  return last;
}

void RollLabels::Insert(const LabelledItem& item, std::int64_t sequence) {
  const Words& w = words_;
  const std::string digits = std::to_string(sequence);
  const std::string lot = item.order + std::string(kSequenceWidth - digits.size(), '0') + digits;
  Execute(database_,
          {"INSERT INTO " + w.Table("MAT_ITEN"),
           "(QTDE, QTDE_R, QTD_MINIMA, COR, LOTE, CODIGO, DEPOSITO, PRECO_MED, LOCAL, BARRA, QTD_MAXIMA, LARGURA,",
           "QUALIDADE)", "VALUES", "(0, 0, 0,", w.Text(item.colour) + ",", w.Text(lot) + ",", w.Text(item.code) + ",",
           w.Text(item.warehouse) + ",", "0,", w.Text("") + ",", w.Text("") + ",", "0, 0,", w.Text("1") + ")"});
}

}  // namespace orders
