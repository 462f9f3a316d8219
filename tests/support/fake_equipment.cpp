#include "support/fake_equipment.h"

#include <utility>

#include "host/errors.h"
#include "host/kit/dataset.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace test {

std::optional<app::PrintJob> FakeEquipment::Print(const app::PrintRequest& request) {
  if (!fail_next.empty()) throw host::InputError(std::exchange(fail_next, {}));
  struct Print print {
    request.report, request.kind, request.flags, request.unknown_functions, {}, {}
  };
  for (const host::Component* component : request.owner.Components()) {
    const auto* dataset = dynamic_cast<const host::Dataset*>(component);
    if (dataset == nullptr || !dataset->Active()) continue;
    auto& rows = print.data[dataset->Name()];
    for (std::size_t row = 1; row <= dataset->RecordCount(); ++row) {
      PrintedRow& kept = rows.emplace_back();
      for (std::size_t field = 0; field < dataset->FieldCount(); ++field) {
        kept[host::UpperAscii(dataset->FieldAt(field).Name())] = dataset->ValueAt(row, field);
      }
    }
    print.current[dataset->Name()] = dataset->RecNo();
  }
  prints_.push_back(std::move(print));
  return app::PrintJob{request.report, request.kind, {}, "teste"};
}

std::vector<struct FakeEquipment::Print> FakeEquipment::TakePrints() { return std::exchange(prints_, {}); }

}  // namespace test
