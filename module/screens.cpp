#include "module/screens.h"

#include <iterator>

#include "composition/cad_composi.h"
#include "module/reports.h"
#include "orders/cad_lote_tec.h"
#include "writeoff/cad_def_tec.h"
#include "writeoff/mov_bai_tec.h"
#include "yarn/mov_bai_fio.h"

namespace tecelagem {
namespace {

template <typename T>
std::unique_ptr<host::Screen> Create(host::Host& host) {
  return std::make_unique<T>(host);
}

constexpr host::ScreenClass kScreens[] = {
    {"TfmCadLoteTec", "Ordens", "Ordens de Tecelagem", &Create<orders::TfmCadLoteTec>},
    {"TfmMovBaiTec", "Baixas", "Baixa de Ordem de Tecelagem", &Create<writeoff::TfmMovBaiTec>},
    {"TfmCadDefTec", "Baixas", "Cadastro de Defeitos", &Create<writeoff::TfmCadDefTec>},
    {"TFmMovBaiFio", "", "Selecione os consumos", &Create<yarn::TFmMovBaiFio>},
    {"TFmCadComposi", "Composições", "Cadastro de Composição", &Create<composition::TFmCadComposi>},
};

}  // namespace

const host::Module& TheModule() {
  static const host::Module kModule = {host::kContractVersion, kScreens, std::size(kScreens), ReportList().data(),
                                       ReportList().size()};
  return kModule;
}

}  // namespace tecelagem
