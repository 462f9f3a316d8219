// One day of the demonstration mill, done at the screens: a fabric gets its composition, an order is typed, its yarn is
// reserved lot by lot, the rolls come back and are written off. Runs again and again on the same database: each time
// it is a new order.
//
//   tecelagem script demo/road-of-one-roll.js --database demo.fdb
"use strict";

const fabric = {
  code: "M0201", colour: "0", name: "MOLETINHO LEVE COM ELASTANO", deposit: "02", article: "7891234502018",
  needles: 1884, width: 1.8, weight: 230, rollWeight: 20, tare: 0.4,
};
const mill = { code: "00101", deposit: "11", cost: 4.2 };
const ordered = 120;
const nets = [20.4, 19.8, 20.1, 20.3, 19.9, 19.5];
// Stitch length in mm on each needle, tension, feeders; the screen works out the shares.
const yarns = [
  { code: "F0006", stitch: 3.6, tension: 4, feeders: 48, count: 30, price: 23.6, supplier: "00201" },
  { code: "F0003", stitch: 1.6, tension: 4, feeders: 48, count: 26, price: 19.7, supplier: "00202" },
  { code: "F0021", stitch: 0.9, tension: 2.5, feeders: 48, count: 134, price: 41.5, supplier: "00204" },
];

// --- telling it -----------------------------------------------------------------------------------------------------

const kg = (number) => format(number, "0.000") + " kg";
const money = (number) => "R$ " + format(number, "0.0000");
const percent = (number) => format(number, "0.00") + " %";
const sum = (list, value) => list.reduce((total, item) => total + value(item), 0);

function title(text) {
  print("");
  print(text);
  print("-".repeat(text.length));
}

// Numbers stand to the right, text to the left; `columns` are [caption, row => text, isNumber].
function table(columns, rows) {
  const cells = rows.map((row) => columns.map(([, text]) => String(text(row))));
  const widths = columns.map(([caption], at) => Math.max(caption.length, ...cells.map((line) => line[at].length)));
  const line = (texts) => texts.map((text, at) =>
    columns[at][2] ? text.padStart(widths[at]) : text.padEnd(widths[at])).join("  ").replace(/\s+$/, "");
  print("  " + line(columns.map(([caption]) => caption)));
  for (const row of cells) print("  " + line(row));
}

function near(actual, expected, tolerance, text) {
  assert(Math.abs(actual - expected) <= tolerance,
         text + ": veio " + actual + ", esperava " + expected + " (tolerância " + tolerance + ")");
}

// An act that the screens must not refuse; what they said is part of the complaint.
function must(done, what) {
  const said = messages().map((box) => box.text).join(" / ");
  assert(done, what + " foi recusado" + (said ? ": " + said : ""));
  return said;
}

// The share of each yarn by the length of its stitches, feeders and count.
function shares() {
  const consumption = yarns.map((y) => 0.59 * Math.round(y.stitch * fabric.needles) * y.feeders / (y.count * 100));
  return consumption.map((one) => one / sum(consumption, (other) => other));
}

// --- the mill before the day --------------------------------------------------------------------------------------------

// The register of materials, the price table and the yarn receipts belong to other modules of the mill's system; what
// this road needs of them is put where they would have put it.
function prepareRegisters() {
  db.exec("UPDATE OR INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, DESCRICAO2, UNIDADE, PESO, GRAMATURA, LARGURA, COMPOSICAO," +
          " ATIVO, ESTOQUE, MAXIMO, LINHA, GRUPO, CODFIS) VALUES (?, ?, 'MOLETINHO 30/1 + 26/1 COM ELASTANO 44 DTEX', 'KG'," +
          " 0.414, ?, ?, 'ALGODÃO E ELASTANO', 'S', 'S', ?, 'INV', 'MCR', '60041011') MATCHING (CODIGO)",
          [fabric.code, fabric.name, fabric.weight, fabric.width, fabric.tare]);
  db.exec("UPDATE OR INSERT INTO {CADCORTI} (TIPO, CODIGO, CODCLI, COR, CUSTO, OBS) VALUES ('C', ?, ?, '0', ?, 'TABELA 2026')" +
          " MATCHING (TIPO, CODIGO, CODCLI, COR)", [fabric.code, mill.code, mill.cost]);
  const known = db.query("SELECT FIRST 1 COR FROM {MAT_ITEN} WHERE CODIGO = ? AND COR = ?", [fabric.code, fabric.colour]);
  if (known.length === 0) {
    db.exec("INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QUALIDADE, BARRA) VALUES (?, ?, ?, '000000', '1', ?)",
            [fabric.code, fabric.colour, fabric.deposit, fabric.article]);
  }
}

// Lots at the mill with what no order has reserved.
function freeLots(yarn) {
  return db.query(
    "SELECT I.LOTE, I.QTDE, I.PRECO_MED, I.QTDE - COALESCE((SELECT SUM(R.QTDE) FROM {MAT_RESERVA} R WHERE R.CODIGO = I.CODIGO" +
    " AND R.COR = I.COR AND R.DEPOSITO = I.DEPOSITO AND R.LOTE = I.LOTE), 0) AS LIVRE FROM {MAT_ITEN} I" +
    " WHERE I.CODIGO = ? AND I.COR = '0' AND I.DEPOSITO = ? AND I.QTDE > 0.01 ORDER BY I.LOTE", [yarn.code, mill.deposit])
    .filter((lot) => lot.LIVRE > 0.01);
}

// The mill has been busy: deliveries arrive, with their movements in the ledger, before the yarn runs out. The first yarn
// is wanted in two lots.
function receiveMissingYarn() {
  yarns.forEach((yarn, at) => {
    const need = ordered * shares()[at] * 1.01;
    const enough = () => at === 0 ? freeLots(yarn).filter((lot) => lot.LIVRE > need / 2).length >= 2
                                  : sum(freeLots(yarn), (lot) => lot.LIVRE) > need;
    while (!enough()) receiveYarn(yarn);
  });
}

function receiveYarn(yarn) {
  const last = db.query("SELECT MAX(SUBSTRING(LOTE FROM 6 FOR 5)) AS ULTIMO FROM {MAT_ITEN} WHERE LOTE SIMILAR TO '002[0-9]{7}'");
  const lot = yarn.supplier + String(Number(last[0].ULTIMO) + 1).padStart(5, "0");
  db.exec("EXECUTE BLOCK (LOTE VARCHAR(32) = ?, CODIGO VARCHAR(15) = ?, DEPOSITO VARCHAR(6) = ?, PRECO DOUBLE PRECISION = ?) AS BEGIN" +
          " INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QTDE, PRECO_MED) VALUES (:CODIGO, '0', :DEPOSITO, :LOTE, 500, :PRECO);" +
          " INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, DATA, QTDE, SAIDA, USUARIO, PRECO, CUSTO," +
          " BAIXADO, ATIVO, TIPO_MOV) VALUES (:CODIGO, '0', :LOTE, :DEPOSITO, 'ENTREGA', 'NF', CURRENT_DATE, 500, 'N'," +
          " 'RECEBIMENTO', :PRECO, :PRECO, '0', '1', 'ENTNF'); END", [lot, yarn.code, mill.deposit, yarn.price]);
  print("Chegou fio: 500 kg de " + yarn.code + ", lote " + lot + ", no depósito " + mill.deposit + ".");
}

function balances() {
  return db.query("SELECT I.CODIGO, M.DESCRICAO, I.LOTE, I.DEPOSITO, I.QTDE, I.PRECO_MED FROM {MAT_ITEN} I" +
                  " JOIN {MATERIAL} M ON M.CODIGO = I.CODIGO WHERE (I.DEPOSITO = ? AND I.CODIGO IN ('F0006', 'F0003', 'F0021'))" +
                  " OR (I.CODIGO = ? AND I.QTDE > 0) ORDER BY I.CODIGO, I.LOTE", [mill.deposit, fabric.code]);
}

// --- the composition -----------------------------------------------------------------------------------------------------

function typeComposition() {
  title("1. Composição da malha " + fabric.code + " - " + fabric.name);
  const s = open("TFmCadComposi");
  must(s.type("EdtCodMat", fabric.code), "a malha " + fabric.code);
  while (s.rows("TbComposi").length > 0) {
    s.select("TbComposi", 0);
    s.remove("TbComposi");
  }
  s.type("EdtLargura", fabric.width);
  s.type("EdtGramatura", fabric.weight);
  s.type("EdtDiametro", 30);
  s.type("EdtFinura", 20);
  s.type("EdtKgRolo", fabric.rollWeight);
  s.type("EdtAgulhas", fabric.needles);
  s.type("EdtDesperdicio", 2.5);
  s.type("EdtRPM", 22);
  for (const yarn of yarns) {
    // The column of the fabric's colour is called by its code; pairs keep it last.
    must(s.append("TbComposi", [["Codigo", yarn.code], ["Milimetros", yarn.stitch], ["Tensao", yarn.tension],
                                ["ROCA", yarn.feeders], [fabric.colour, "0"]]), "o fio " + yarn.code);
  }
  answer("Deseja recalcular?", "yes");
  must(s.click("btnGravar"), "a composição");

  const stored = db.query("SELECT C.ORDEM, C.CODIGO, M.DESCRICAO, C.LFA, C.ROCA, M.NE, C.PERC, C.COR_I FROM {COMP_MATERIAL} C" +
                          " JOIN {MATERIAL} M ON M.CODIGO = C.CODIGO WHERE C.MATERIAL = ? ORDER BY C.ORDEM", [fabric.code]);
  table([["Fio", (r) => r.CODIGO], ["Descrição", (r) => r.DESCRICAO], ["Ne", (r) => r.NE, true],
         ["LFA", (r) => format(r.LFA, "0.0"), true], ["Roca", (r) => r.ROCA, true], ["Participação", (r) => percent(r.PERC), true]],
        stored);
  assertEqual(stored.map((row) => row.CODIGO), yarns.map((yarn) => yarn.code), "fios gravados, na ordem digitada");
  stored.forEach((row, at) => near(row.PERC, shares()[at] * 100, 0.001, "participação de " + row.CODIGO));
  s.close();
}

// --- the order -----------------------------------------------------------------------------------------------------------

function typeOrder() {
  const s = open("TfmCadLoteTec");
  must(s.click("BtnIncluir"), "a inclusão");
  const number = s.text("EdtNumero");
  title("2. Ordem de tecelagem " + number);
  for (const [input, value] of [["EdtMalharia", mill.code], ["EdtFicha", "FL-" + number], ["EdtPrazo", "15"], ["EdtMaquina", "T06"],
                                ["EdtPonto", 3.6], ["EdtFluxo", "FLA"], ["EdtRPM", 22], ["EdtDeposito", fabric.deposit]]) {
    must(s.type(input, value), input);
  }
  must(s.append("TbItens", {Codigo: fabric.code, Pedido: "PV10240", Cor: fabric.colour, Qtde: ordered}), "o item");
  const item = s.rows("TbItens")[0];
  print("  Malharia   " + mill.code + " " + s.text("LblMalharia"));
  print("  Data       " + s.text("EdtData") + ", entrega em " + s.text("LblPrazo"));
  print("  Item       " + item.Codigo + " " + item.Descricao + ", cor " + item.Cor + " " + item.DescCor);
  print("  Quantidade " + kg(item.Qtde) + " a R$ " + format(item.Custo, "0.00") + " por kg de serviço");
  assertEqual(item.Custo, mill.cost, "custo do serviço pela tabela da malharia");
  must(s.click("BtnGravar"), "a gravação da ordem");
  return { screen: s, number };
}

// Lots to take `need` from; half and half from two of them where a roll is to see one lot run out.
function chooseLots(rows, need, split) {
  const free = (lot) => Math.floor((lot.Qtde - lot.Qtde_Reservado) * 1000) / 1000;
  const half = Math.round(need / 2 * 1000) / 1000;
  const atMill = rows.filter((row) => row.Deposito === mill.deposit);
  const taken = [];
  let left = need;
  for (const lot of split ? atMill.filter((row) => free(row) >= half) : atMill) {
    const quantity = Math.min(split && taken.length === 0 ? half : left, free(lot));
    if (quantity < 0.001) continue;
    taken.push({ lot: lot.Lote, quantity });
    left = Math.round((left - quantity) * 1000) / 1000;
  }
  assert(left === 0, "faltam " + kg(left) + " de fio livre no depósito " + mill.deposit);
  return taken;
}

function reserveYarn(order) {
  const s = order.screen;
  must(s.type("EdtNumero", order.number), "a consulta da ordem");
  title("3. Fio necessário para " + kg(ordered) + " de malha");
  const needed = s.rows("TbFios");
  table([["Fio", (r) => r.Codigo], ["Descrição", (r) => r.Descricao], ["Consumo", (r) => kg(r.Consumo), true],
         ["Estoque total", (r) => kg(r.Qtde), true], ["Em compra", (r) => kg(r.Qtde_OC || 0), true]], needed);
  assertEqual(needed.length, yarns.length, "fios da explosão");
  near(sum(needed, (row) => row.Consumo), ordered, 0.001, "o fio todo pesa o que a malha pesa");

  title("4. Reserva de fio, lote a lote, no depósito da malharia (" + mill.deposit + ")");
  const reserved = [];
  needed.forEach((yarn) => {
    s.select("TbFios", {Codigo: yarn.Codigo});
    for (const { lot, quantity } of chooseLots(s.rows("TbEstoque"), yarn.Consumo_Total, yarn.Codigo === yarns[0].code)) {
      s.select("TbEstoque", {Lote: lot, Deposito: mill.deposit});
      must(s.set("TbEstoque", {Sel: true, Qtde_Res: quantity}), "a reserva do lote " + lot);
      reserved.push({ code: yarn.Codigo, name: yarn.Descricao, lot, quantity });
    }
  });
  must(s.click("BtnGravar"), "a gravação da reserva");
  table([["Fio", (r) => r.code], ["Descrição", (r) => r.name], ["Lote", (r) => r.lot], ["Reservado", (r) => kg(r.quantity), true]],
        reserved);
  const stored = db.query("SELECT LOTE, QTDE, QTDE_B FROM {MAT_RESERVA} WHERE NUMERO = ? ORDER BY LOTE", [order.number]);
  assertEqual(stored.length, reserved.length, "reservas gravadas");
  for (const row of stored) {
    near(row.QTDE, reserved.find((one) => one.lot === row.LOTE).quantity, 0.000001, "reserva do lote " + row.LOTE);
  }
  s.close();
  return reserved;
}

// --- the rolls -----------------------------------------------------------------------------------------------------------

// What the weaver is paid, less the taxes that are taken back when the weaver is not under the simplified regime.
function serviceCost() {
  const simple = db.query("SELECT SIMPLES FROM {ENTIDADE} WHERE CODCLI = ?", [mill.code])[0].SIMPLES === "S";
  const taxes = simple ? 0 : Math.round(mill.cost * (1.65 + 7.6)) / 100;
  return { taxes, net: mill.cost - taxes };
}

function tellRoll(order, roll, net) {
  const [row] = db.query("SELECT ORDEM, QTDE, LOTE, DEPOSITO FROM {TECELB} WHERE NUMERO = ? AND ORDEM = ?", [order.number, roll]);
  assert(row !== undefined, "a peça " + roll + " não foi gravada");
  near(row.QTDE, net, 0.0000005, "peso líquido da peça " + roll);
  const used = db.query("SELECT B.CODIGO, B.LOTE, B.QTDE, I.PRECO_MED FROM {BAIXA_FIO} B JOIN {MAT_ITEN} I ON I.CODIGO = B.CODIGO" +
                        " AND I.COR = B.COR AND I.DEPOSITO = B.DEPOSITO AND I.LOTE = B.LOTE WHERE B.NUMERO = ? AND B.ORDEM = ?" +
                        " ORDER BY B.CODIGO DESC, B.LOTE", [order.number, roll]);
  near(sum(used, (yarn) => yarn.QTDE), net, 0.02, "fio da peça " + roll);
  const service = serviceCost();
  const yarnCost = sum(used, (yarn) => yarn.QTDE * yarn.PRECO_MED) / net;
  const [stock] = db.query("SELECT QTDE, PRECO_MED, LOCAL FROM {MAT_ITEN} WHERE CODIGO = ? AND COR = ? AND DEPOSITO = ? AND LOTE = ?",
                           [fabric.code, fabric.colour, fabric.deposit, row.LOTE]);
  near(stock.QTDE, net, 0.0000005, "estoque do lote " + row.LOTE);
  near(stock.PRECO_MED, yarnCost + service.net, 0.02, "custo da malha da peça " + roll);

  print("  Peça " + roll + ": bruto " + kg(net + fabric.tare) + ", tara " + kg(fabric.tare) + ", líquido " + kg(net) +
        ", lote " + row.LOTE + ", " + stock.LOCAL);
  for (const yarn of used) {
    print("      " + yarn.CODIGO + "  lote " + yarn.LOTE + "  " + kg(yarn.QTDE).padStart(10) + "  a " + money(yarn.PRECO_MED) + "/kg");
  }
  print("      custo da malha: fio " + money(stock.PRECO_MED - service.net) + " + serviço " + money(service.net) + " = " +
        money(stock.PRECO_MED) + "/kg");
  return { net, cost: stock.PRECO_MED, lots: used.length };
}

function writeOffRolls(order) {
  title("5. Baixa das peças da ordem " + order.number);
  const service = serviceCost();
  print("  Serviço: R$ " + format(mill.cost, "0.00") + " por kg menos PIS/COFINS de R$ " + format(service.taxes, "0.00") +
        " = R$ " + format(service.net, "0.00"));
  const s = open("TfmMovBaiTec");
  must(s.type("EdtLote", order.number), "a ordem " + order.number);
  must(s.type("EdtFunc", "00011"), "o responsável");
  must(s.type("EdtTurno", "1"), "o turno");
  must(s.type("EdtNFRet", "004512"), "a nota de retorno");
  must(s.type("EdtLocal", "RUA M03"), "o local");
  s.select("TbItens", {Codigo: fabric.code});
  const rolls = nets.map((net, at) => {
    must(s.type("EdtPecas", 1), "as peças");
    must(s.type("EdtTara", fabric.tare), "a tara");
    must(s.type("EdtQtde", net + fabric.tare), "o peso");
    const said = must(s.click("BtnConfirma"), "a baixa da peça " + (at + 1));
    assertEqual(said, "", "avisos na baixa da peça " + (at + 1));
    return tellRoll(order, at + 1, net);
  });
  assert(rolls.some((roll) => roll.lots > yarns.length), "uma peça usa dois lotes do mesmo fio, quando um se acaba");
  const item = s.rows("TbItens")[0];
  near(item.Qtde_B, ordered, 0.0000005, "quantidade baixada do item");
  assertEqual(item.Baixada, "S", "o item completo fica fechado");
  print("  Item da ordem: " + kg(item.Qtde_B) + " de " + kg(item.Qtde) + " baixados; item fechado.");
  s.close();
  return rolls;
}

// --- the books -----------------------------------------------------------------------------------------------------------

function tellStock(before, after) {
  title("6. Estoque antes e depois");
  const rows = after.map((row) => {
    const was = before.find((old) => old.CODIGO === row.CODIGO && old.LOTE === row.LOTE && old.DEPOSITO === row.DEPOSITO);
    return { row, was: was ? was.QTDE : 0 };
  }).filter(({ row, was }) => Math.abs(row.QTDE - was) > 0.0000005);
  table([["Material", (r) => r.row.CODIGO], ["Descrição", (r) => r.row.DESCRICAO], ["Depósito", (r) => r.row.DEPOSITO],
         ["Lote", (r) => r.row.LOTE], ["Antes", (r) => kg(r.was), true], ["Depois", (r) => kg(r.row.QTDE), true],
         ["Diferença", (r) => kg(r.row.QTDE - r.was), true], ["Valor/kg", (r) => money(r.row.PRECO_MED), true]], rows);
  return rows;
}

function checkBooks(order, moved, rolls, reserved) {
  const yarnOut = -sum(moved.filter(({ row }) => row.CODIGO !== fabric.code), ({ row, was }) => row.QTDE - was);
  const fabricIn = sum(moved.filter(({ row }) => row.CODIGO === fabric.code), ({ row, was }) => row.QTDE - was);
  near(fabricIn, ordered, 0.000001, "malha que entrou");
  near(yarnOut, sum(reserved, (one) => one.quantity), 0.02, "fio que saiu, contra o reservado");
  const left = db.query("SELECT SUM(QTDE) AS RESTO, SUM(QTDE_B) AS BAIXADO FROM {MAT_RESERVA} WHERE NUMERO = ?", [order.number])[0];
  near(left.RESTO, 0, 0.02, "reserva que sobrou");
  near(left.BAIXADO, yarnOut, 0.02, "reserva baixada, contra o fio que saiu");
  const off = db.query(
    "SELECT I.CODIGO, I.LOTE FROM {MAT_ITEN} I WHERE ABS(I.QTDE - COALESCE((SELECT SUM(IIF(M.SAIDA = 'S', -M.QTDE, M.QTDE))" +
    " FROM {MAT_MOV} M WHERE M.CODIGO = I.CODIGO AND M.COR = I.COR AND M.DEPOSITO = I.DEPOSITO AND M.LOTE = I.LOTE), 0)) > 0.00001");
  assertEqual(off, [], "saldos que diferem da soma dos seus movimentos");
  const value = sum(rolls, (roll) => roll.net * roll.cost);
  title("7. Fechamento");
  print("  " + rolls.length + " peças, " + kg(fabricIn) + " de malha em estoque por R$ " + format(value, "0.00") +
        " (" + money(value / fabricIn) + "/kg em média)");
  print("  " + kg(yarnOut) + " de fio fora do estoque da malharia; reservas da ordem encerradas.");
  print("  Os saldos de todos os lotes batem com a soma dos seus movimentos.");
}

prepareRegisters();
receiveMissingYarn();
print("TECELAGEM DE DEMONSTRAÇÃO - o caminho de uma peça, do fio ao estoque (" + clock().substr(0, 10) + ")");
const before = balances();
typeComposition();
const order = typeOrder();
const reserved = reserveYarn(order);
const rolls = writeOffRolls(order);
checkBooks(order, tellStock(before, balances()), rolls, reserved);
