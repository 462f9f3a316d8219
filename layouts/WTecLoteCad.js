// The order as the mill gets it: what to knit, on what, from which yarns, and the rolls that are expected back.
// Datasets: QryRelatorio (the order and its items), TbFios (yarns), QryRaport (stitch patterns), TbRolos (expected
// rolls); see docs/layouts.md.
"use strict";

const WIDTH = 186;   // mm between the margins
const GREY = "#555555";

const plain = (value) => value === null || value === undefined ? "" : String(value).trim();
const joined = (...parts) => parts.map(plain).filter((part) => part !== "").join(" ");
const positive = (value, format) => value > 0 ? number(value, format) : "";

const order = QryRelatorio.first || {};

const amount = (quantity, unit) =>
  joined(number(quantity, plain(unit).toUpperCase() === "KG" ? "#,##0.000" : "#,##0.###"), plain(unit).toLowerCase());

// A fabric whose composition tells feeders or speed differently from yarn to yarn comes in several rows: it is one item,
// with all that is told.
function readItems() {
  const items = new Map();
  for (const row of QryRelatorio.rows) {
    if (plain(row.CODIGO) === "") continue;
    const key = [row.CODIGO, row.COR, row.PEDIDO, row.QTDE, row.CICLOS, row.OBS_ITEM].map(plain).join("\n");
    if (!items.has(key)) items.set(key, []);
    items.get(key).push(row);
  }
  return [...items.values()];
}

const items = readItems();

// "30" or "30 / 32", as the rows of an item tell.
function told(rows, field, format) {
  const texts = rows.map((row) => positive(row[field], format)).filter((one) => one !== "");
  return [...new Set(texts)].join(" / ");
}

// Two items of one fabric and colour share their rolls: they are told with the first.
function rollsOf(row) {
  const twin = items.find((rows) => plain(rows[0].CODIGO) === plain(row.CODIGO) && plain(rows[0].COR) === plain(row.COR));
  if (twin[0] !== row) return "";
  const expected = TbRolos.rows.filter((roll) =>
    plain(roll.CODIGO) === plain(row.CODIGO) && plain(roll.COR) === plain(row.COR)).length;
  return expected > 0 ? String(expected) : "";
}

// "720,000 kg  +  300 pc"
function totalOf() {
  const sums = new Map();
  for (const [row] of items) {
    const unit = plain(row.UNIDADE).toLowerCase();
    sums.set(unit, (sums.get(unit) || 0) + (row.QTDE || 0));
  }
  return [...sums].map(([unit, sum]) => amount(sum, unit)).join("  +  ");
}

// --- parts of a page -------------------------------------------------------------------------------------------------

// Captions above their values, side by side in boxes.
function boxes(cells, y, height, size) {
  let x = 0;
  return cells.map(([caption, shown, w]) => {
    const at = x;
    x += w;
    return [
      { box: [at, y, w, height], width: 0.15 },
      { text: caption, x: at + 1, y: y + 0.5, w: w - 2, h: 2.9, size: 6, color: GREY },
      { text: plain(shown), x: at + 1, y: y + 3.2, w: w - 2, h: height - 3.6, size, bold: true, wrap: true,
        shrink: true, valign: "middle" },
    ];
  }).reduce((all, cell) => all.concat(cell), []);
}

function pageHeader() {
  const numero = plain(order.NUMERO);
  const shown = [
    { text: plain(info.company), x: 0, y: 0, w: 92, h: 4.2, size: 9, shrink: true },
    { text: "Ordem de Tecelagem", x: 0, y: 4.4, w: 92, h: 7, size: 16, bold: true, shrink: true },
    { text: joined(order.MALHARIA, order.NOME), x: 0, y: 11.8, w: 92, h: 4.4, size: 10, shrink: true },
    { text: numero, x: 92, y: 1.5, w: 46, h: 13, size: 34, bold: true, shrink: true, align: "right", valign: "middle" },
    { line: [0, 17.4, WIDTH, 17.4], width: 0.5 },
  ];
  if (encodes("code128", numero)) {
    shown.push({ barcode: "code128", value: numero, x: 140, y: 1.5, w: 46, h: 13, text: false, dpi: 300 });
  }
  return [band({ items: shown, height: 19 })];
}

const orderData = () => band({
  items: [].concat(
    boxes([["Malharia", joined(order.MALHARIA, order.NOME), 108], ["Data", date(order.DT_INICIO), 30],
           ["Prazo de entrega", order.PERIODO, 48]], 0, 10, 11),
    boxes([["Máquina", joined(order.MAQUINA, order.DESCMAQ), 70], ["Fluxo", joined(order.FLUXO, order.DESC_FLUXO), 68],
           ["RPM", positive(order.RPM, "0"), 22], ["Tam. do ponto", positive(order.TPONTO, "0.000"), 26]], 10, 10, 10),
    boxes([["Ficha do lote", order.FICHA, 48], ["Depósito de entrada", joined(order.DEPOSITO, order.DESC_DEP_ENT), 78],
           ["Total da ordem", totalOf(), 60]], 20, 10, 10)),
  height: 30,
});

const section = (title) => [space(3.5), heading(title, { size: 11, bold: true, keepWithNext: true })];

// --- items -----------------------------------------------------------------------------------------------------------

// One fabric in one colour: what it is and how much in large type, how it is knitted below, remarks over the full width.
function itemBand(rows) {
  const row = rows[0];
  const more = plain(row.DESCRICAO2) === plain(row.DESCRICAO) ? "" : plain(row.DESCRICAO2);
  const shown = [
    { box: [0, 0, WIDTH, 7], width: 0.15, fill: "#eeeeee" },
    { text: plain(row.CODIGO), x: 1, y: 0.6, w: 24, h: 5.8, size: 12, bold: true, shrink: true, valign: "middle" },
    { text: plain(row.DESCRICAO), x: 26, y: 0.6, w: 72, h: 5.8, size: 11, bold: true, shrink: true, valign: "middle" },
    { text: joined("Cor", row.COR, row.DESCCOR), x: 99, y: 0.6, w: 50, h: 5.8, size: 10, shrink: true, valign: "middle" },
    { text: amount(row.QTDE || 0, row.UNIDADE), x: 150, y: 0.6, w: 35, h: 5.8, size: 13, bold: true, shrink: true,
      align: "right", valign: "middle" },
  ].concat(boxes([
    ["Kg por rolo", told(rows, "KG_ROLO", "0.00"), 20], ["Rolos", rollsOf(row), 16],
    ["Largura (m)", told(rows, "LARGURA", "0.00"), 21], ["Gramatura", told(rows, "GRAMATURA", "0.##"), 21],
    ["Diâmetro", told(rows, "DIAMETRO", "0.##"), 18], ["Finura", told(rows, "FINURA", "0.##"), 16],
    ["Agulhas", told(rows, "ALIMENTADORES", "0.##"), 19], ["Ciclos", positive(row.CICLOS, "0"), 17],
    ["RPM", told(rows, "RPM_MAT", "0"), 14], ["Pedido", row.PEDIDO, 24]], 7, 8.4, 9));
  const remarks = [more, row.OBS_ITEM, plain(row.OBS_CUSTO_MALHA) && "Preço: " + plain(row.OBS_CUSTO_MALHA)]
    .map(plain).filter((one) => one !== "");
  return [
    band({ items: shown, height: 15.8, keepWithNext: remarks.length > 0 }),
    ...remarks.map((words, at) => band({
      items: [{ text: words, x: 1, y: 0, w: WIDTH - 2, size: 8.5, wrap: true }],
      keepWithNext: at + 1 < remarks.length,
    })),
    space(2.5),
  ];
}

function itemSection() {
  if (items.length === 0) return [...section("Itens"), paragraph("Nenhum item.")];
  return [...section("Itens"), ...items.map((rows) => itemBand(rows))];
}

// --- yarns, stitch patterns, remarks ---------------------------------------------------------------------------------

const yarnSection = () => [...section("Fios"), table({
  title: "Fios",
  rows: TbFios,
  zebra: true,
  totals: "Total",
  empty: "Nenhum fio na composição das malhas.",
  columns: [
    { caption: "Código", field: "Codigo", width: 16 },
    { caption: "Fio", field: "Descricao", width: "*", wrap: true },
    { caption: "Cor", value: (yarn) => joined(yarn.COR, yarn.DESCCOR), width: 34, wrap: true },
    { caption: "Ne", value: (yarn) => positive(yarn.NE, "0"), width: 8, align: "right" },
    { caption: "LFA", value: (yarn) => positive(yarn.LFA, "0.##"), width: 13, align: "right" },
    { caption: "Roca", value: (yarn) => positive(yarn.ROCA, "0"), width: 11, align: "right" },
    { caption: "Ponto", value: (yarn) => positive(yarn.MILIMETRO, "0.00"), width: 12, align: "right" },
    { caption: "Tensão", value: (yarn) => positive(yarn.TENSAO, "0.##"), width: 14, align: "right" },
    { caption: "Consumo", field: "Consumo", format: "#,##0.000", width: 22, align: "right", total: true },
    { caption: "Un.", field: "Unidade", width: 8 },
  ],
})];

// The patterns are read by fabrics and by colours: those of a fabric in a colour that this order does not have are not
// for this mill.
function patternSection() {
  const ordered = new Map(items.map(([row]) => [plain(row.CODIGO) + " / " + plain(row.COR), row]));
  const keyOf = (row) => plain(row.MATERIAL) + " / " + plain(row.COR);
  const rows = QryRaport.rows.filter((row) => ordered.has(keyOf(row)));
  if (rows.length === 0) return [];
  return [...section("Raport"), table({
    title: "Raport",
    rows,
    zebra: true,
    group: {
      by: keyOf,
      header: (row) => {
        const item = ordered.get(keyOf(row));
        return joined(item.CODIGO, item.DESCRICAO) + "   " + joined("Cor", item.COR, item.DESCCOR);
      },
    },
    columns: [
      { caption: "Ordem", field: "ORDEM", width: 13, align: "right" },
      { caption: "Fio", value: (row) => joined(row.CODIGO, row.DESCRICAO), width: "*", wrap: true },
      { caption: "Cor", value: (row) => joined(row.COR_I, row.DESC_COR), width: 40, wrap: true },
      { caption: "mm", field: "MILIMETROS", format: "0.##", width: 14, align: "right" },
      { caption: "Aliment.", field: "ALIMENTADORES", format: "0.##", width: 16, align: "right" },
      { caption: "Observação", field: "OBSERVACAO", width: 44, wrap: true },
    ],
  })];
}

const remarkSection = () => plain(order.OBSERVACAO) === "" ? []
  : [...section("Observações"), paragraph(plain(order.OBSERVACAO), { size: 10 })];

// --- expected rolls --------------------------------------------------------------------------------------------------

// A box per roll to write its weight into, while that is a hand's work; beyond it just the numbers.
function rollSection() {
  const rolls = TbRolos.rows;
  if (rolls.length === 0) return [];
  const written = rolls.length <= 400;
  const perLine = written ? 8 : 16;
  const w = WIDTH / perLine;
  const h = written ? 8 : 5;
  const lines = [];
  for (let at = 0; at < rolls.length; at += perLine) {
    const shown = [];
    rolls.slice(at, at + perLine).forEach((roll, column) => {
      const x = column * w;
      shown.push({ box: [x, 0, w, h], width: 0.15 });
      shown.push({ text: plain(roll.NR), x: x + 1, y: 0.4, w: written ? 7.5 : w - 2, h: h - 0.8, size: 8, bold: true,
                   shrink: true, valign: written ? "top" : "middle" });
      if (written) {
        shown.push({ text: joined(roll.CODIGO, roll.COR), x: x + 8, y: 0.5, w: w - 9, h: 2.8, size: 5.5, color: GREY, align: "right",
                     shrink: true });
      }
    });
    lines.push(band({ items: shown, height: h }));
  }
  const title = "Rolos esperados (" + rolls.length + ")" + (written ? ": anote o peso de cada um" : "");
  return [...section(title), ...lines];
}

// --- signatures ------------------------------------------------------------------------------------------------------

function signatures() {
  const w = 56;
  const names = ["Emitido por", "Recebido na malharia", "Conferido no retorno"];
  const shown = names.map((name, at) => [
    { line: [at * (w + 9), 12, at * (w + 9) + w, 12], width: 0.2 },
    { text: name, x: at * (w + 9), y: 12.5, w, h: 4, size: 8, align: "center" },
  ]).reduce((all, one) => all.concat(one), []);
  return keepTogether([space(4), band({ items: shown, height: 17 })]);
}

report({
  title: joined("Ordem de Tecelagem", order.NUMERO),
  page: { size: "A4", margins: [12, 10, 12, 10] },
  font: { size: 9 },
  pageHeader: () => pageHeader(),
  body: [orderData(), itemSection(), yarnSection(), patternSection(), remarkSection(), rollSection(), signatures()],
});
