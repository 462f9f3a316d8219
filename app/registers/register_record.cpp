// Storing and deleting the record of a register's screen.
#include <utility>

#include "app/registers/register_screen.h"
#include "app/registers/usage.h"
#include "host/errors.h"

namespace app::registers {

void TfmRegister::Log(std::string_view what, host::LogOperation operation, std::string_view key) const {
  GetHost().GetFuncoes().GeraLog(tables::LogSubject(description_), std::string(what) + " " + std::string(key),
                                 operation, key, nullptr);
}

// --- storing --------------------------------------------------------------------------------------------------------

void TfmRegister::BtnGravarClick() {
  RequireRight("A");
  GravaDados();
}

Record TfmRegister::ReadInputs() {
  Record record;
  for (const auto& input : inputs_) {
    mill::Cell cell = input->Read();
    if (cell.objection) {
      Refuse("Campo \"" + std::string(input->Description().caption) + "\": " + *cell.objection, input->Control());
    }
    record.values.push_back(std::move(cell.value));
  }
  if (detail_ != nullptr) record.detail = detail_->Read();
  return record;
}

void TfmRegister::GravaDados() {
  const Record typed = ReadInputs();
  if (!new_ && !Changed()) return;
  const std::string key = typed.values.front().AsText();
  if (new_) {
    if (store_.Exists(key)) {
      Refuse(
          tables::RecordName(description_, key, true) + " já está " + tables::Agreeing(description_, "cadastrad") + ".",
          inputs_.front()->Control());
    }
    store_.Insert(typed);
    Log("INCLUSAO DE", host::LogOperation::kInclusion, key);
  } else {
    const std::optional<Record> now = store_.ReadHeld(key);
    if (!now) RefuseGone(key);
    if (ChangedElsewhere(*now, typed)) RefuseChanged(key);
    store_.Update(key, stored_, typed);
    Log("ALTERACAO DE", host::LogOperation::kAlteration, key);
  }
  // Nothing is asked of the database once the record is safe: what the screen then says of it must not fail.
  std::optional<Record> written = store_.Read(key);
  const auto row = store_.ListRow(key);
  application_.GetDatabase().MakeDurable();
  for (std::size_t i = 0; i < inputs_.size(); ++i) inputs_[i]->Stored(written->values[i]);
  if (detail_ != nullptr) detail_->Show(written->detail);
  stored_ = std::move(*written);
  read_at_ = GetHost().GetClock().Now();
  SetNew(false);
  RefreshRow(key, *row);
}

bool TfmRegister::ChangedElsewhere(const Record& now, const Record& typed) const {
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    if (now.values[i] == stored_.values[i]) continue;
    if (!description_.columns[i].set_by_rolls || typed.values[i] != stored_.values[i]) return true;
  }
  return now.detail != stored_.detail;
}

void TfmRegister::RefuseChanged(std::string_view key) {
  std::string who;
  const auto mark = GetHost().GetFuncoes().UltimoLog(tables::LogSubject(description_), key);
  // An older row tells of an older change: this one came in another way, such as an import.
  if (mark && mark->moment >= read_at_) {
    who = " por " + mark->user + " em " + mark->moment.date.ToDisplay() + " " + mark->moment.ToIso().substr(11, 5);
  }
  const bool reload =
      Confirm(tables::RecordName(description_, key, true) + " foi " + tables::Agreeing(description_, "alterad") + who +
              " depois de " + tables::Agreeing(description_, "abert") +
              " aqui. Deseja carregar novamente? O que foi digitado se perde.");
  if (reload) {
    BuscaDados(key);
    RefreshRow(key, *store_.ListRow(key));
  }
  throw host::Abort();
}

void TfmRegister::RefuseGone(std::string_view key) {
  for (const auto& input : inputs_) input->BecomeNew();
  SetNew(true);
  DropRow(key);
  Refuse(tables::RecordName(description_, key, true) + " foi " + tables::Agreeing(description_, "excluíd") +
         " depois de " + tables::Agreeing(description_, "abert") + " aqui. Para incluir novamente, grave outra vez.");
}

// --- deleting -------------------------------------------------------------------------------------------------------

void TfmRegister::BtnExcluirClick() {
  RequireRight("E");
  if (new_) Refuse("Não há registro para excluir.");
  const std::string key = stored_.values.front().AsText();
  if (!Confirm("Deseja excluir " + tables::RecordName(description_, key) + "?")) return;
  if (const auto where = WhereUsed(application_.GetDatabase(), description_.table, key)) {
    Refuse(tables::RecordName(description_, key, true) + " está " + *where + ". Não pode ser " +
           tables::Agreeing(description_, "excluíd") + ".");
  }
  store_.Delete(key);
  Log("EXCLUSAO DE", host::LogOperation::kDeletion, key);
  application_.GetDatabase().MakeDurable();
  LimpaTela();
  DropRow(key);
  ShowCurrent();
}

}  // namespace app::registers
