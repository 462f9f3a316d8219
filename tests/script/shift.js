// A shift at the weighing station. `given.plan` says what comes: the orders with their items, and the rolls one after
// the other.
"use strict";

const plan = JSON.parse(given.plan);
const kilogram = (number) => format(number, "0.000");

function balanced(when) {
  assertEqual(db.check(), [], "os livros " + when);
}

// An act that must be done without a word.
function quietly(done, what) {
  assertEqual(messages(), [], what);
  assert(done, what);
}

function typeOrder(order) {
  const s = open("TfmCadLoteTec");
  quietly(s.click("BtnIncluir"), "a ordem nova");
  assertEqual(s.text("EdtNumero"), order.number);
  s.type("EdtMalharia", "M00001");
  s.type("EdtDeposito", "DF");
  for (const item of order.items) {
    quietly(s.append("TbItens", {Codigo: item.code, Cor: item.colour, Qtde: item.quantity}), "o item " + item.code);
  }
  quietly(s.click("BtnGravar"), "a ordem " + order.number);
  s.type("EdtNumero", order.number);
  s.type("EdtFilDeposito", "");
  s.rows("TbFios").forEach((yarn, at) => {
    s.select("TbFios", at);
    order.lots.forEach((lot, turn) => {
      s.select("TbEstoque", {Lote: lot, Deposito: "D1"});
      const part = Math.round(yarn.Consumo_Total * 1000 / order.lots.length) / 1000;
      quietly(s.set("TbEstoque", {Sel: true, Qtde_Res: turn === 0 ? part : part + 1}), "a reserva de " + yarn.Codigo);
    });
  });
  quietly(s.click("BtnGravar"), "as reservas da ordem " + order.number);
  s.type("EdtNumero", order.number);
  for (const item of order.items.filter((one) => one.labels > 0)) {
    s.select("TbItens", {Codigo: item.code, Cor: item.colour});
    s.enter("TbItens");
    answer("Quantidade:", String(item.labels));
    assert(s.menu("Gerar Etiqueta(s)"), "as etiquetas de " + item.code);
    assertEqual(messages().map((box) => box.text), ["Etiquetas Geradas."]);
  }
  s.close();
  balanced("depois da ordem " + order.number);
}

// The scanner types the code and Enter, F5 weighs and confirms: two keys for a roll.
function weigh(s, roll) {
  quietly(s.type("EdtBarra", roll.scan), "a leitura de " + roll.scan);
  assertEqual(s.text("EdtCodigo") + " " + s.text("EdtCor"), roll.code + " " + roll.colour, "o item lido");
  quietly(s.key("F5"), "a pesagem da peça " + roll.number);
  assertEqual(s.focused(), "EdtBarra", "o foco depois da peça");
  assertEqual([s.text("EdtBarra"), s.value("EdtQtde")], ["", 0]);
  const [listed] = s.rows("TbRolos");
  assertEqual([listed.Ordem, listed.Lote, kilogram(listed.Qtde)], [roll.number, roll.lot, kilogram(roll.net)]);
  assertEqual(jobs().map((job) => job.report + job.kind), ["WEtqTecRoloT"], "a etiqueta da peça " + roll.number);
  balanced("depois da peça " + roll.number + " da ordem " + roll.order);
}

function registerDefects(s, roll) {
  s.select("TbRolos", {Ordem: roll.number});
  modal("TfmCadDefTec", (register) => {
    for (const defect of roll.defects) quietly(register.append("TbDef", {Defeito: defect, Peso: 1.5}), defect);
    quietly(register.click("BitBtn1"), "os defeitos");
  });
  quietly(s.click("BtnDefeitos"), "o cadastro de defeitos");
  s.select("TbRolos", {Ordem: roll.number});
  quietly(s.menu("Imprimir Etiqueta"), "a etiqueta com os defeitos");
  assertEqual(jobs().length, 1);
  balanced("depois dos defeitos da peça " + roll.number);
}

function reverse(s, order, number) {
  load(s, order);
  s.select("TbRolos", {Ordem: number});
  answer("Deseja estornar este Movimento?", "yes");
  assert(s.click("BtnExtorna"), "o estorno da peça " + number);
  assertEqual(messages().length, 1, "só a pergunta do estorno");
  balanced("depois do estorno da peça " + number + " da ordem " + order);
}

function load(s, order) {
  if (s.text("EdtLote") !== order) s.type("EdtLote", order);
}

plan.orders.forEach(typeOrder);
const station = open("TfmMovBaiTec");
station.check("CbBarra");
station.type("EdtFunc", "P1");
for (const step of plan.steps) {
  if (step.reverses) {
    reverse(station, step.order, step.number);
  } else {
    load(station, step.order);
    weigh(station, step);
    if (step.defects.length > 0) registerDefects(station, step);
  }
}
