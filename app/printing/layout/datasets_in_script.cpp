#include "app/printing/layout/datasets_in_script.h"

#include <QJSValueIterator>
#include <utility>

#include "app/printing/layout/script_options.h"
#include "app/printing/page/mistake.h"
#include "host/text.h"

namespace app::printing {
namespace {

QJSValue ToScript(const host::Value& value) {
  if (value.IsNull()) return QJSValue(QJSValue::NullValue);
  if (value.IsNumber()) return QJSValue(value.AsFloat());
  return QJSValue(QString::fromStdString(value.IsDate() ? value.AsDate().ToIso() : value.AsText()));
}

class DatasetRows : public RowSource {
 public:
  DatasetRows(DatasetsInScript& owner, int id, host::Dataset& dataset) : owner_(owner), id_(id), dataset_(dataset) {}

  std::size_t Size() const override { return static_cast<std::size_t>(owner_.Count(id_)); }
  FieldRef Find(const std::string& field) const override {
    for (std::size_t at = 0; at < dataset_.FieldCount(); ++at) {
      const host::Field& found = dataset_.FieldAt(at);
      if (host::SameName(found.Name(), field)) return {found.Name(), at, &found};
    }
    // Without rows there is nothing to print, and a dataset that was never opened may have no fields.
    if (!dataset_.Active()) return {field, 0, nullptr};
    throw Mistake("o conjunto " + dataset_.Name() + " não tem o campo " + Quoted(field));
  }
  std::vector<FieldRef> Fields() const override {
    std::vector<FieldRef> fields;
    for (std::size_t at = 0; at < dataset_.FieldCount(); ++at) {
      fields.push_back({dataset_.FieldAt(at).Name(), at, &dataset_.FieldAt(at)});
    }
    return fields;
  }
  host::Value At(std::size_t row, const FieldRef& field) const override {
    return dataset_.ValueAt(row + 1, field.index);
  }
  QJSValue ScriptRow(std::size_t row) override { return owner_.Row(id_, row); }

 private:
  DatasetsInScript& owner_;
  int id_;
  host::Dataset& dataset_;
};

class ListedRows : public RowSource {
 public:
  ListedRows(const QJSValue& rows, std::size_t size, host::Dataset* origin)
      : rows_(rows), size_(size), origin_(origin) {}

  std::size_t Size() const override { return size_; }
  FieldRef Find(const std::string& field) const override {
    const host::Field* found = origin_ != nullptr ? origin_->FindField(field) : nullptr;
    FieldRef ref{found != nullptr ? found->Name() : field, 0, found};
    if (size_ > 0 && !rows_.property(0).hasProperty(QString::fromStdString(ref.name))) {
      throw Mistake("as linhas não têm o campo " + Quoted(field));
    }
    return ref;
  }
  std::vector<FieldRef> Fields() const override {
    std::vector<FieldRef> fields;
    if (size_ == 0 || !IsPlainObject(rows_.property(0))) return fields;
    QJSValueIterator property(rows_.property(0));
    while (property.next()) {
      const std::string name = property.name().toStdString();
      fields.push_back({name, 0, origin_ != nullptr ? origin_->FindField(name) : nullptr});
    }
    return fields;
  }
  host::Value At(std::size_t row, const FieldRef& field) const override {
    const QJSValue value = rows_.property(static_cast<quint32>(row)).property(QString::fromStdString(field.name));
    return ValueFromScript(value, field.field,
                           "o campo " + Quoted(field.name) + " da linha " + std::to_string(row + 1));
  }
  QJSValue ScriptRow(std::size_t row) override { return rows_.property(static_cast<quint32>(row)); }

 private:
  QJSValue rows_;
  std::size_t size_;
  host::Dataset* origin_;  // that the rows came from; null for others
};

}  // namespace

host::Value ValueFromScript(const QJSValue& value, const host::Field* field, const std::string& what) {
  if (value.isNull()) return {};
  if (value.isNumber()) return host::Value(value.toNumber());
  if (value.isString()) {
    std::string text = PrintedText(value, what).toStdString();
    if (field != nullptr && field->Def().type == host::FieldType::kDate) {
      if (const auto date = host::Date::FromIso(text)) return host::Value(*date);
    }
    return host::Value(std::move(text));
  }
  if (value.isBool()) return host::Value(value.toBool() ? "Sim" : "Não");
  return host::Value(PrintedText(value, what).toStdString());
}

DataTable DataOf(const RowSource& rows) {
  DataTable table;
  const std::vector<RowSource::FieldRef> fields = rows.Fields();
  for (const auto& field : fields) {
    const host::FieldDef def = field.field != nullptr ? field.field->Def() : host::FieldDef{field.name};
    table.columns.push_back({def.caption.empty() ? def.name : def.caption, def.format});
  }
  for (std::size_t row = 0; row < rows.Size() && !fields.empty(); ++row) {
    std::vector<host::Value> values;
    for (const auto& field : fields) {
      try {
        values.push_back(rows.At(row, field));
      } catch (const Mistake&) {
        values.emplace_back();  // a list or an object of the layout's own
      }
    }
    table.rows.push_back(std::move(values));
  }
  return table;
}

DatasetsInScript::DatasetsInScript(QJSEngine& engine, const host::Screen& screen) : engine_(engine) {
  for (host::Component* component : screen.Components()) {
    if (auto* dataset = dynamic_cast<host::Dataset*>(component)) entries_.push_back({dataset, {}, {}});
  }
}

QStringList DatasetsInScript::Names() const {
  QStringList names;
  for (const Entry& entry : entries_) names.append(QString::fromStdString(entry.dataset->Name()));
  return names;
}

int DatasetsInScript::Count(int dataset) const {
  const host::Dataset& found = *entries_.at(static_cast<std::size_t>(dataset)).dataset;
  return found.Active() ? static_cast<int>(found.RecordCount()) : 0;
}

QJSValue DatasetsInScript::MakeRow(Entry& entry, int dataset, std::size_t rec_no) {
  const std::size_t count = entry.dataset->FieldCount();
  if (entry.factory.isUndefined()) {
    QJSValue names = engine_.newArray(static_cast<uint>(count));
    for (std::size_t at = 0; at < count; ++at) {
      names.setProperty(static_cast<quint32>(at), QString::fromStdString(entry.dataset->FieldAt(at).Name()));
    }
    entry.factory = make_factory_.call({QJSValue(dataset), names});
  }
  QJSValueList values;
  values.reserve(static_cast<qsizetype>(count));
  for (std::size_t at = 0; at < count; ++at) values.append(ToScript(entry.dataset->ValueAt(rec_no, at)));
  return entry.factory.call(values);
}

QJSValue DatasetsInScript::Rows(int dataset) {
  Entry& entry = entries_.at(static_cast<std::size_t>(dataset));
  if (entry.rows.isUndefined()) {
    const int count = Count(dataset);
    entry.rows = engine_.newArray(static_cast<uint>(count));
    for (int at = 0; at < count; ++at) {
      entry.rows.setProperty(static_cast<quint32>(at), MakeRow(entry, dataset, static_cast<std::size_t>(at) + 1));
    }
  }
  return entry.rows;
}

QJSValue DatasetsInScript::Current(int dataset) {
  Entry& entry = entries_.at(static_cast<std::size_t>(dataset));
  const std::size_t rec_no = entry.dataset->Active() ? entry.dataset->RecNo() : 0;
  if (rec_no == 0) return QJSValue(QJSValue::NullValue);
  if (rec_no > entry.dataset->RecordCount()) return MakeRow(entry, dataset, rec_no);  // being inserted
  // The same object as among the rows, where they are made already; for one row alone they are not.
  if (!entry.rows.isUndefined()) return entry.rows.property(static_cast<quint32>(rec_no - 1));
  return MakeRow(entry, dataset, rec_no);
}

QString DatasetsInScript::Shown(int dataset, const QJSValue& row, const QString& field) const {
  const host::Dataset& found = *entries_.at(static_cast<std::size_t>(dataset)).dataset;
  const std::string name = field.toStdString();
  const host::Field* known = found.FindField(name);
  if (known == nullptr) throw Mistake("o conjunto " + found.Name() + " não tem o campo " + Quoted(name));
  if (row.isNull()) return {};
  if (!IsPlainObject(row)) throw Mistake(found.Name() + ".shown() precisa de uma linha e do nome de um campo");
  const QJSValue value = row.property(QString::fromStdString(known->Name()));
  return QString::fromStdString(known->DisplayText(ValueFromScript(value, known, "o campo " + Quoted(name))));
}

std::shared_ptr<RowSource> DatasetsInScript::SourceOf(const QJSValue& rows) {
  const QString mark = QStringLiteral("__dataset");
  if (IsPlainObject(rows) && rows.property(mark).isNumber() && !rows.property(QStringLiteral("__name")).isUndefined()) {
    const int id = rows.property(mark).toInt();
    return std::make_shared<DatasetRows>(*this, id, *entries_.at(static_cast<std::size_t>(id)).dataset);
  }
  if (!rows.isArray()) throw Mistake("\"rows\" precisa ser um conjunto de dados ou uma lista de linhas");
  const quint32 count = rows.property(QStringLiteral("length")).toUInt();
  constexpr quint32 kMostRows = 1'000'000;
  if (count > kMostRows) throw Mistake("\"rows\" tem mais de um milhão de linhas");
  const QJSValue id = count > 0 ? rows.property(0).property(mark) : QJSValue();
  host::Dataset* origin = id.isNumber() ? entries_.at(static_cast<std::size_t>(id.toInt())).dataset : nullptr;
  return std::make_shared<ListedRows>(rows, count, origin);
}

}  // namespace app::printing
