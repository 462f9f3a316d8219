// The accounting periods: in a reconciled one nothing is booked any more.
#pragma once

#include <optional>
#include <string>

#include "app/admin/list_screen.h"

namespace app::admin {

struct PeriodRecord {
  std::string area;
  host::Date from;
  host::Date to;
  bool reconciled = false;
  bool operator==(const PeriodRecord&) const = default;
};

class TfmPeriodos : public ListScreen {
 public:
  explicit TfmPeriodos(Application& application);

 private:
  std::unique_ptr<host::TTIQuery> ReadList() override;
  bool LocateRecord() override;
  bool ShowRecord() override;
  void ShowNew() override;
  void Save() override;
  std::string TheRecord() const override;
  void Delete() override;

  void ShowPeriod(const PeriodRecord& period);
  PeriodRecord Typed() const;
  void CheckInputs(const PeriodRecord& period);
  void CheckStillThere() const;
  void CheckOverlap(const PeriodRecord& period) const;
  void Store(const PeriodRecord& period);

 public:
  // In tab order.
  host::Edit EdtArea;
  host::Edit EdtDe;
  host::Edit EdtAte;
  host::CheckBox ChkConciliado;
  host::Label LblAviso;
  host::Dataset TbPeriodos;
  host::Grid GrdPeriodos;
  host::Button BtnIncluir;
  host::Button BtnGravar;
  host::Button BtnExcluir;
  host::Button BtnCancelar;
  host::Button BtnFechar;

 private:
  std::optional<PeriodRecord> loaded_;  // what the inputs were filled from; nothing for a new period
};

}  // namespace app::admin
