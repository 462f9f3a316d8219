#include "app/tables/descriptions.h"

#include <algorithm>

#include "host/text.h"

namespace app::tables {
namespace {

constexpr std::string_view kNumber = "0.######";

ColumnDescription Code(std::string_view name, std::string_view caption = "Código", int width = 8) {
  return {.name = name, .caption = caption, .list_width = width};
}

ColumnDescription Text(std::string_view name = "DESCRICAO", std::string_view caption = "Descrição") {
  return {.name = name, .caption = caption, .list_width = 40, .required = true};
}

ColumnDescription Flag(std::string_view name, std::string_view caption, std::string_view initial,
                       std::string_view help = {}) {
  return {.name = name, .caption = caption, .help = help, .initial = initial};
}

ColumnDescription Number(std::string_view name, std::string_view caption, std::string_view help = {}) {
  return {.name = name, .caption = caption, .format = kNumber, .help = help};
}

/// A register that is a code and a description.
RegisterDescription CodeAndText(std::string_view class_name, std::string_view caption, std::string_view table,
                                std::string_view noun, bool feminine, std::string_view key = "CODIGO") {
  return {class_name, caption, table, noun, feminine, "DESCRICAO", {Code(key), Text()}};
}

RegisterDescription Materials() {
  return {
      "TfmMateriais",
      "Materiais",
      "MATERIAL",
      "material",
      false,
      "DESCRICAO",
      {
          Code("CODIGO", "Código", 15),
          Text(),
          {.name = "DESCRICAO2", .caption = "Descrição completa", .help = "Como sai nos relatórios."},
          {.name = "UNIDADE",
           .caption = "Unidade",
           .list_width = 5,
           .help = "KG, MT, PC ou UN; o peso converte metros e peças em quilogramas.",
           .required = true},
          Number("PESO", "Peso (kg)", "Quilogramas de uma unidade; 1 quando a unidade é KG."),
          {.name = "GRUPO", .caption = "Grupo", .list_width = 7},
          {.name = "LINHA", .caption = "Linha", .list_width = 7},
          {.name = "CODFIS", .caption = "Classe fiscal"},
          {.name = "CODCLI", .caption = "Cliente ou fornecedor", .help = "De quem é o material, ou quem o fornece."},
          {.name = "NE", .caption = "Título Ne", .list_width = 7, .help = "De um fio; 0 nos demais materiais."},
          Number("GRAMATURA", "Gramatura", "Da malha, em g/m²; de um fio, o título em denier."),
          Number("LARGURA", "Largura", "Da malha, em metros; de um fio, o título em tex."),
          Number("CONCENTRACAO", "Concentração", "De um fio, o título em dtex."),
          {.name = "COMPOSICAO", .caption = "Composição", .help = "Em palavras, como sai na etiqueta."},
          Number("MAXIMO", "Tara (kg)", "Da peça de malha: o que se desconta do peso bruto."),
          {.name = "REPOSICAO",
           .caption = "Custo de reposição",
           .format = kNumber,
           .help = "De um fio: vale como seu custo nas composições."},
          {.name = "PRECO",
           .caption = "Custo da última peça",
           .format = kNumber,
           .help = "Cada peça baixada o atualiza.",
           .set_by_rolls = true},
          {.name = "CUSTO_IMP",
           .caption = "Custo importado",
           .format = kNumber,
           .help = "De um fio: digitado aqui; da malha: cada peça baixada o atualiza.",
           .set_by_rolls = true},
          Flag("ATIVO", "Ativo", "S", "Um material inativo não entra em ordens novas."),
          Flag("ESTOQUE", "Controla estoque", "S"),
          {.name = "OBSERVACAO", .caption = "Observação"},
      },
  };
}

RegisterDescription Partners() {
  return {
      "TfmEntidades",
      "Clientes e Fornecedores",
      "ENTIDADE",
      "cadastro",
      false,
      "NOME",
      {
          Code("CODCLI"),
          Text("NOME", "Nome"),
          {.name = "CIDADE", .caption = "Cidade", .list_width = 20},
          {.name = "UF", .caption = "UF", .list_width = 4},
          Flag("ATIVO", "Ativo", "S", "Um cadastro inativo não recebe ordens novas."),
          Flag("BLOQUEIO", "Bloqueado", "N", "Um cadastro bloqueado não recebe ordens novas."),
          Flag("SIMPLES", "Optante pelo Simples", "N"),
      },
  };
}

RegisterDescription Deposits() {
  return {
      "TfmDepositos",
      "Depósitos",
      "DEPOSITO",
      "depósito",
      false,
      "DESCRICAO",
      {
          Code("CODIGO"),
          Text(),
          {.name = "CODCLI",
           .caption = "Malharia",
           .list_width = 8,
           .help = "De um depósito que fica numa malharia de fora."},
          {.name = "PRIORIDADE",
           .caption = "Prioridade",
           .list_width = 6,
           .help = "1: onde começa o estoque novo; 5: o depósito de fios da malharia."},
      },
  };
}

RegisterDescription Machines() {
  return {
      "TfmMaquinas",
      "Máquinas",
      "MAQUINA",
      "máquina",
      true,
      "DESCRICAO",
      {Code("MAQUINA"), Text(), {.name = "TIPO", .caption = "Tipo", .list_width = 8}},
  };
}

RegisterDescription People() {
  return {
      "TfmPessoal",
      "Pessoal",
      "PESSOAL",
      "pessoa",
      true,
      "NOME",
      {Code("CODIGO"), Text("NOME", "Nome"), {.name = "TURNO", .caption = "Turno", .list_width = 6}},
  };
}

RegisterDescription Shifts() {
  return {
      "TfmTurnos",
      "Turnos",
      "TURNO",
      "turno",
      false,
      "DESCRICAO",
      {
          Code("TURNO"),
          Text(),
          Flag("NOTURNO", "Noturno", "N", "Atravessa a meia-noite: as peças da madrugada são do dia em que começou."),
      },
      DetailDescription{
          "TURNO_HORARIOS",
          "Horários",
          "TURNO",
          {.name = "DIA", .caption = "Dia", .list_width = 14},
          {"Domingo", "Segunda-feira", "Terça-feira", "Quarta-feira", "Quinta-feira", "Sexta-feira", "Sábado"},
          {
              {.name = "ENTRADA", .caption = "Entrada", .list_width = 10, .help = "HH:MM"},
              {.name = "SAIDA", .caption = "Saída", .list_width = 10, .help = "HH:MM"},
          },
      },
  };
}

RegisterDescription Packages() {
  return {
      "TfmEmbalagens",
      "Embalagens",
      "CADTAG",
      "embalagem",
      true,
      "DESCRICAO",
      {
          Code("CODIGO"),
          Text(),
          {.name = "QTDE",
           .caption = "Unidades por embalagem",
           .list_width = 12,
           .format = kNumber,
           .help = "O código é o indicador de embalagem do código de barras."},
      },
  };
}

RegisterDescription Rules() {
  return {
      "TfmRegras",
      "Regras de composição",
      "TNG_REGRA",
      "regra",
      true,
      "DESCRICAO",
      {
          Code("CODIGO"),
          Text(),
          {.name = "FORMULA",
           .caption = "Fórmula",
           .list_width = 40,
           .help = "Percentual do fio pelos dados da malha, como MIN(9; GRAMATURA * 0,02 + 3).",
           .required = true},
      },
  };
}

std::vector<RegisterDescription> MakeRegisters() {
  return {
      Materials(),
      CodeAndText("TfmCores", "Cores", "CADCOR", "cor", true, "COR"),
      Partners(),
      Deposits(),
      Machines(),
      People(),
      Shifts(),
      CodeAndText("TfmPrazos", "Prazos", "TABPRZ", "prazo", false, "PRAZO"),
      CodeAndText("TfmFluxos", "Fluxos", "FLUXOTIN", "fluxo", false),
      CodeAndText("TfmDefeitos", "Defeitos", "DEFEITO", "defeito", false),
      CodeAndText("TfmQualidades", "Qualidades", "TABQUL", "qualidade", true),
      Packages(),
      CodeAndText("TfmLinhas", "Linhas", "TABLIN", "linha", true),
      CodeAndText("TfmClassesFiscais", "Classes fiscais", "TABFIS", "classe fiscal", true),
      CodeAndText("TfmGrupos", "Grupos", "GRUPO_MA", "grupo", false),
      Rules(),
  };
}

/// Capitals of the letters that Portuguese captions have; in UTF-8 the accented ones differ from their small forms by
/// one bit of the second byte.
std::string Capitals(std::string_view text) {
  std::string capitals = host::UpperAscii(text);
  for (std::size_t i = 1; i < capitals.size(); ++i) {
    const auto second = static_cast<unsigned char>(capitals[i]);
    if (static_cast<unsigned char>(capitals[i - 1]) == 0xC3 && second >= 0xA0 && second <= 0xBE) {
      capitals[i] = static_cast<char>(second - 0x20);
    }
  }
  return capitals;
}

}  // namespace

const ColumnDescription* RegisterDescription::Find(std::string_view column) const {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [&](const ColumnDescription& c) { return c.name == column; });
  return found == columns.end() ? nullptr : &*found;
}

std::span<const RegisterDescription> Registers() {
  static const std::vector<RegisterDescription> kRegisters = MakeRegisters();
  return kRegisters;
}

const RegisterDescription* FindRegister(std::string_view table) {
  for (const RegisterDescription& description : Registers()) {
    if (description.table == table) return &description;
  }
  return nullptr;
}

std::string_view CaptionOf(std::string_view table, std::string_view column) {
  const RegisterDescription* description = FindRegister(table);
  const ColumnDescription* found = description == nullptr ? nullptr : description->Find(column);
  return found == nullptr ? std::string_view() : found->caption;
}

std::string RecordName(const RegisterDescription& description, std::string_view key, bool starts_sentence) {
  const std::string article = description.feminine ? (starts_sentence ? "A " : "a ") : (starts_sentence ? "O " : "o ");
  return article + std::string(description.noun) + " " + std::string(key);
}

std::string Agreeing(const RegisterDescription& description, std::string_view stem) {
  return std::string(stem) + (description.feminine ? "a" : "o");
}

std::string LogSubject(const RegisterDescription& description) {
  return "CADASTRO DE " + Capitals(description.caption);
}

}  // namespace app::tables
