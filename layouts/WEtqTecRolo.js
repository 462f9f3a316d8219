// The label of a woven roll, 100 x 60 mm, for label printers of 203 dpi and more.
// Datasets: TbRolos (the roll at the cursor), TbItens, QryDefeitos, QryEtiqueta; see docs/layouts.md.
"use strict";

const left = 2;
const right = 98;
const width = right - left;

const plain = (value) => value === null || value === undefined ? "" : String(value).trim();
const joined = (...parts) => parts.map(plain).filter((part) => part !== "").join(" ");

const itemOf = (roll) => {
  if (typeof TbItens !== "object") return null;
  return TbItens.rows.find((item) => plain(item.CODIGO) === plain(roll.CODIGO) && plain(item.COR) === plain(roll.COR)) || null;
};

// What the label tells beside the roll's own row; every part of it may be missing.
function aboutFabric(roll) {
  const stock = typeof QryEtiqueta === "object" && QryEtiqueta.first || {};
  const item = itemOf(roll) || {};
  return {
    colour: plain(stock.DESC_COR) || plain(item.DESC_COR),
    unit: (plain(stock.UNIDADE) || plain(item.UNIDADE) || "KG").toUpperCase(),
    make: [plain(stock.COMPOSICAO),
           stock.LARGURA > 0 ? number(stock.LARGURA, "0.00") + " m" : "",
           stock.GRAMATURA > 0 ? number(stock.GRAMATURA, "0") + " g/m²" : ""].filter((part) => part !== "").join("  ·  "),
    gtin: plain(stock.BARRA),
  };
}

// Each defect once, with how often it was found: "BURACO (2), FIO PUXADO". What does not fit is counted.
function defectsOf(roll) {
  if (typeof QryDefeitos !== "object") return "";
  const found = new Map();
  for (const row of QryDefeitos.rows) {
    if (plain(row.NUMERO) !== plain(roll.NUMERO) || Number(row.ROLO) !== Number(roll.ORDEM)) continue;
    const name = plain(row.DESCRICAO) || plain(row.CODIGO);
    found.set(name, (found.get(name) || 0) + 1);
  }
  const room = 1.85 * (width - 13);  // two lines, less what their break may leave empty
  let shown = "";
  let hidden = 0;
  for (const [name, times] of found) {
    const one = times > 1 ? name + " (" + times + ")" : name;
    const longer = (shown === "" ? "" : shown + ", ") + one;
    if (hidden > 0 || (shown !== "" && textWidth(longer + " e mais 99", { size: 6.5 }) > room)) hidden += 1;
    else shown = longer;
  }
  return hidden > 0 ? shown + " e mais " + hidden : shown;
}

const caption = (words, x, y, w) => ({ text: words, x, y, w, h: 2.7, size: 6 });
const value = (words, x, y, w, size, more) =>
  Object.assign({ text: words, x, y, w, h: size * 0.49, size, bold: true, shrink: true }, more || {});
const line = (y) => ({ line: [left, y, right, y], width: 0.25 });

function header(roll) {
  return [
    { text: plain(info.company), x: left, y: 1, w: 44, h: 4.4, size: 8, shrink: true, valign: "middle" },
    { text: joined("Ordem", roll.NUMERO), x: 47, y: 1, w: 29, h: 4.4, size: 10, bold: true, shrink: true,
      align: "right", valign: "middle" },
    { box: [78, 0.9, 20, 4.7], fill: "black" },
    { text: joined("ROLO", roll.ORDEM), x: 78.5, y: 0.9, w: 19, h: 4.7, size: 11, bold: true, shrink: true,
      align: "center", valign: "middle", color: "white" },
  ];
}

function fabric(roll, about) {
  const w = 77;
  const colour = joined(roll.COR, about.colour);
  return [
    value(joined(roll.DESCRICAO), left, 6.2, w, 14, { h: 7, wrap: true, valign: "middle" }),
    value(joined(roll.CODIGO), left, 13.4, 26, 11, { h: 5.4, valign: "middle" }),
    value(colour === "" ? "" : "Cor " + colour, left + 27, 13.4, w - 27, 11, { h: 5.4, wrap: true, valign: "middle" }),
    { text: about.make, x: left, y: 19.1, w, h: 3.2, size: 6.5, shrink: true },
  ];
}

function amount(roll, about) {
  const kilograms = about.unit === "KG";
  const shown = roll.QTDE === null ? "—" : number(roll.QTDE, kilograms ? "#,##0.000" : "#,##0.###");
  return [
    line(22.8),
    caption(kilograms ? "PESO LÍQUIDO" : "QUANTIDADE", left, 23.1, 45),
    value(joined(shown, about.unit.toLowerCase()), left, 24.8, 46, 26, { h: 11, valign: "middle" }),
    { line: [49.5, 22.8, 49.5, 36], width: 0.25 },
    caption("LOTE", 51, 23.1, 45),
    value(plain(roll.LOTE), 51, 24.8, right - 51, 26, { h: 11, valign: "middle" }),
    line(36),
  ];
}

function details(roll) {
  const cells = [
    ["PEÇAS", roll.QTDE_R > 0 ? number(roll.QTDE_R, "0.###") : "1", 9],
    ["DATA", date(roll.DT_LAN), 18],
    ["TURNO", plain(roll.TURNO), 10],
    ["OPERADOR", joined(roll.FUNCIONARIO, roll.NOME), 29],
    ["MÁQUINA", joined(roll.MAQUINA, roll.DESC_MAQUINA), 30],
  ];
  let x = left;
  return cells.map(([name, shown, w]) => {
    const items = [caption(name, x, 36.3, w - 1), value(shown, x, 38.8, w - 1, 8, { h: 4, wrap: true, valign: "middle" })];
    x += w;
    return items;
  });
}

function defects(roll) {
  return [
    line(42.8),
    caption("DEFEITOS", left, 43.3, 13),
    { text: defectsOf(roll), x: left + 13, y: 43, w: width - 13, h: 5.8, size: 6.5, wrap: true, shrink: true },
  ];
}

// The article's number of 14 digits is written in the symbol whose scan is just these digits, as the write-off reads
// them; the same number of 13 digits has a 0 in front. One with a wrong check digit is no number of an article.
function codes(roll, about) {
  const y = 49;
  const h = 10;
  const gtin = /^\d{13}$/.test(about.gtin) ? "0" + about.gtin : about.gtin;
  const article = /^\d{14}$/.test(gtin) && encodes("itf14", gtin);
  const lot = plain(roll.LOTE);
  const items = [];
  if (encodes("code128", lot)) {
    items.push({ barcode: "code128", value: lot, x: left, y, w: article ? 56 : width, h, text: false });
  }
  if (article) items.push({ barcode: "itf14", value: gtin, x: 58, y, w: right - 58, h, text: true });
  const both = joined(lot && "LOTE " + lot, roll.QTDE === null ? "" : "PESO " + roll.QTDE.toFixed(3) + " " + about.unit);
  if (both !== "") items.push({ barcode: "qr", value: both, x: 81, y: 5.9, w: 17, h: 16.8 });
  return items;
}

label({
  width: 100,
  height: 60,
  dpi: 203,
  rows: TbRolos.current === null ? [] : [TbRolos.current],
  draw: (roll) => {
    const about = aboutFabric(roll);
    return [].concat(header(roll), fabric(roll, about), amount(roll, about), ...details(roll), defects(roll),
                     codes(roll, about));
  },
});
