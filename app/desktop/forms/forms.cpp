#include "app/desktop/forms/forms.h"

#include <iterator>
#include <string_view>

#include "app/desktop/forms/register_form.h"
#include "host/text.h"
#include "ui_cad_composi.h"
#include "ui_cad_def_tec.h"
#include "ui_cad_lote_tec.h"
#include "ui_log.h"
#include "ui_mov_bai_fio.h"
#include "ui_mov_bai_tec.h"
#include "ui_parametros.h"
#include "ui_periodos.h"
#include "ui_senha.h"
#include "ui_usuarios.h"

namespace app::desktop {
namespace {

template <typename Form>
std::unique_ptr<QWidget> Drawn(const host::Screen& /*screen*/) {
  auto widget = std::make_unique<QWidget>();
  Form form;
  form.setupUi(widget.get());
  return widget;
}

struct KnownForm {
  std::string_view screen_class;
  std::unique_ptr<QWidget> (*make)(const host::Screen&);
};

constexpr KnownForm kForms[] = {
    {"TfmCadLoteTec", &Drawn<Ui::CadLoteTec>}, {"TfmMovBaiTec", &Drawn<Ui::MovBaiTec>},
    {"TFmMovBaiFio", &Drawn<Ui::MovBaiFio>},   {"TfmCadDefTec", &Drawn<Ui::CadDefTec>},
    {"TFmCadComposi", &Drawn<Ui::CadComposi>}, {"TfmLog", &Drawn<Ui::Log>},
    {"TfmParametros", &Drawn<Ui::Parametros>}, {"TfmPeriodos", &Drawn<Ui::Periodos>},
    {"TfmSenha", &Drawn<Ui::Senha>},           {"TfmUsuarios", &Drawn<Ui::Usuarios>},
};

}  // namespace

std::unique_ptr<QWidget> NewForm(const host::Screen& screen) {
  for (const KnownForm& known : kForms) {
    if (known.make != nullptr && host::SameName(known.screen_class, screen.ClassName())) return known.make(screen);
  }
  return NewRegisterForm(screen);
}

}  // namespace app::desktop
