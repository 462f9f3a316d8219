// The label of a woven roll in ZPL II, 100 x 60 mm at 203 dpi (8 dots a millimetre), for the print type "T".
// Datasets: TbRolos (the roll at the cursor), TbItens, QryDefeitos, QryEtiqueta; see docs/layouts.md.
"use strict";

// false for a printer that knows no UTF-8 (^CI28): capitals without accents then.
const ACCENTS = true;

const WIDTH = 812;   // dots
const HEIGHT = 480;
const LEFT = 16;
const RIGHT = WIDTH - 24;

const plain = (value) => value === null || value === undefined ? "" : String(value).trim();
const joined = (...parts) => parts.map(plain).filter((part) => part !== "").join(" ");

// --- text of fixed room ----------------------------------------------------------------------------------------------

// Widths of the printer's scalable font 0 in parts of its character width, each rounded up: a text may come out
// narrower than this, never wider.
function widthOf(letter) {
  if ("iljtfrI.,:;'|!()[] ".indexOf(letter) >= 0) return 0.36;
  if ("MW@%—mw".indexOf(letter) >= 0) return 0.9;
  if (letter >= "0" && letter <= "9") return 0.56;
  return letter === letter.toLowerCase() ? 0.58 : 0.7;
}

const dotsOf = (words, size) => Math.ceil([...words].reduce((sum, letter) => sum + widthOf(letter), 0) * size);

// In field data ^ and ~ begin commands and _ an escape; all of them, and what is no printable character, are written
// as escapes or left out.
function escaped(words) {
  const letters = [...(ACCENTS ? words : RemoveAcento(words.toUpperCase()))].map((letter) => {
    const code = letter.codePointAt(0);
    if (code < 32 || (code >= 127 && code < 160)) return " ";
    if (!ACCENTS && code > 126) return "?";
    if ("^~_\\".indexOf(letter) < 0) return letter;
    return "_" + code.toString(16).toUpperCase();
  });
  return "^FH_^FD" + letters.join("") + "^FS";
}

// A line of text within `room` dots: narrower letters first, then lower ones, then the end is left out.
function line(words, x, y, room, height, right) {
  let shown = plain(words);
  if (shown === "") return "";
  let h = height;
  let w = height;
  while (dotsOf(shown, w) > room && w > 0.7 * h) w -= 1;
  while (dotsOf(shown, w) > room && h > Math.max(16, height / 2)) {
    h -= 1;
    w = Math.floor(0.7 * h);
  }
  if (dotsOf(shown, w) > room) {
    while (shown !== "" && dotsOf(shown + "...", w) > room) shown = [...shown].slice(0, -1).join("");
    shown = shown.trim() + "...";
  }
  const top = y + Math.floor((height - h) / 2);
  const at = right ? x + room - dotsOf(shown, w) : x;
  return "^FO" + at + "," + top + "^A0N," + h + "," + w + escaped(shown) + "\n";
}

const caption = (words, x, y) => line(words, x, y, 200, 18);
const ruleAt = (y) => "^FO" + LEFT + "," + y + "^GB" + (RIGHT - LEFT) + ",2,2^FS\n";

// --- what the label tells --------------------------------------------------------------------------------------------

// What is known beside the roll's own row; every part of it may be missing.
function aboutFabric(roll) {
  const stock = typeof QryEtiqueta === "object" && QryEtiqueta.first || {};
  const item = typeof TbItens === "object" && TbItens.rows.find((one) =>
    plain(one.CODIGO) === plain(roll.CODIGO) && plain(one.COR) === plain(roll.COR)) || {};
  return {
    colour: plain(stock.DESC_COR) || plain(item.DESC_COR),
    unit: (plain(stock.UNIDADE) || plain(item.UNIDADE) || "KG").toUpperCase(),
    make: [plain(stock.COMPOSICAO),
           stock.LARGURA > 0 ? number(stock.LARGURA, "0.00") + " m" : "",
           stock.GRAMATURA > 0 ? number(stock.GRAMATURA, "0") + " g/m²" : ""].filter((part) => part !== "").join("  -  "),
    gtin: plain(stock.BARRA),
  };
}

// Each defect once, with how often it was found, in at most two lines; what does not fit is counted.
function defectLines(roll, room, size) {
  const found = new Map();
  for (const row of typeof QryDefeitos === "object" ? QryDefeitos.rows : []) {
    if (plain(row.NUMERO) !== plain(roll.NUMERO) || Number(row.ROLO) !== Number(roll.ORDEM)) continue;
    const name = plain(row.DESCRICAO) || plain(row.CODIGO);
    found.set(name, (found.get(name) || 0) + 1);
  }
  const names = [...found].map(([name, times]) => times > 1 ? name + " (" + times + ")" : name);
  const tail = " e mais " + names.length;
  const lines = [""];
  for (const [at, name] of names.entries()) {
    const last = lines.length - 1;
    const longer = lines[last] === "" ? name : lines[last] + ", " + name;
    const keep = last === 1 && at < names.length - 1 ? tail : "";
    if (lines[last] === "" || dotsOf(longer + keep, size) <= room) lines[last] = longer;
    else if (last === 0) lines.push(name);
    else {
      lines[last] += " e mais " + (names.length - at);
      break;
    }
  }
  return lines;
}

// --- bar codes -------------------------------------------------------------------------------------------------------

// Modules of a Code 128 with its quiet zones: two digits take one character, all others one each.
function modulesOf(lot) {
  const characters = /^\d+$/.test(lot) ? Math.ceil(lot.length / 2) + lot.length % 2 : lot.length;
  return 11 * (characters + 2) + 13 + 20;
}

function lotCode(lot, x, y, room, height) {
  if (!encodes("code128", lot)) return "";
  const modules = modulesOf(lot);
  const module = Math.min(4, Math.floor(room / modules));
  if (module < 1) return "";
  return "^FO" + (x + 10 * module) + "," + y + "^BY" + module + "^BCN," + height + ",N,N,N,A" + escaped(lot) + "\n";
}

// The article's number of 14 digits in the symbol whose scan is just these digits, as the write-off reads them.
function articleCode(gtin, x, y, height) {
  const module = 2;
  return "^FO" + (x + 10 * module) + "," + y + "^BY" + module + ",3^B2N," + height + ",Y,N,N" + escaped(gtin) + "\n";
}

// The printer sets a QR code about ten dots lower than it is told.
function lotAndWeight(words, x, y) {
  const small = words.length > 38;
  return "^FO" + x + "," + y + "^BQN,2," + (small ? 3 : 4) + "^FH_^FDMA," + escaped(words).slice("^FH_^FD".length) + "\n";
}

// --- the label -------------------------------------------------------------------------------------------------------

function details(roll) {
  const cells = [
    ["PEÇAS", roll.QTDE_R > 0 ? number(roll.QTDE_R, "0.###") : "1", 72],
    ["DATA", date(roll.DT_LAN), 144],
    ["TURNO", plain(roll.TURNO), 76],
    ["OPERADOR", joined(roll.FUNCIONARIO, roll.NOME), 236],
    ["MÁQUINA", joined(roll.MAQUINA, roll.DESC_MAQUINA), 244],
  ];
  let x = LEFT;
  let commands = "";
  for (const [name, shown, room] of cells) {
    commands += caption(name, x, 292) + line(shown, x, 312, room - 10, 28);
    x += room;
  }
  return commands;
}

function bars(roll, about) {
  const gtin = about.gtin.length === 13 ? ZeroE(about.gtin, "14") : about.gtin;
  const article = /^\d{14}$/.test(gtin) && encodes("itf14", gtin);
  const room = article ? 450 : RIGHT - LEFT;
  const codes = lotCode(plain(roll.LOTE), LEFT, 396, room, 76);
  return article ? codes + articleCode(gtin, 472, 396, 52) : codes;
}

function rollLabel(roll) {
  const about = aboutFabric(roll);
  const kilograms = about.unit === "KG";
  const weight = roll.QTDE === null ? "-" : number(roll.QTDE, kilograms ? "#,##0.000" : "#,##0.###");
  const lot = plain(roll.LOTE);
  const colour = joined(roll.COR, about.colour);
  const scanned = joined(lot && "LOTE " + lot, roll.QTDE === null ? "" : "PESO " + roll.QTDE.toFixed(3) + " " + about.unit);
  const found = defectLines(roll, RIGHT - 128, 22);
  return "^XA\n" +
    (ACCENTS ? "^CI28\n" : "") +
    "^PW" + WIDTH + "^LL" + HEIGHT + "^LH0,0\n" +
    line(info.company, LEFT, 12, 350, 28) +
    line(joined("Ordem", roll.NUMERO), 376, 10, 236, 34, true) +
    line("ROLO " + ZeroE(plain(roll.ORDEM), "3"), 622, 8, RIGHT - 622, 40, true) +
    ruleAt(50) +
    line(roll.DESCRICAO, LEFT, 60, 620, 46) +
    line(roll.CODIGO, LEFT, 110, 200, 36) +
    line(colour && "Cor " + colour, LEFT + 212, 110, 408, 36) +
    line(about.make, LEFT, 150, 620, 22) +
    (scanned === "" ? "" : lotAndWeight(scanned, 656, 48)) +
    ruleAt(178) +
    caption(kilograms ? "PESO LÍQUIDO" : "QUANTIDADE", LEFT, 184) +
    line(joined(weight, about.unit.toLowerCase()), LEFT, 202, 370, 78) +
    "^FO396,178^GB2,108,2^FS\n" +
    caption("LOTE", 408, 184) +
    line(lot, 408, 202, RIGHT - 408, 78) +
    ruleAt(286) +
    details(roll) +
    ruleAt(342) +
    caption("DEFEITOS", LEFT, 348) +
    found.map((words, at) => line(words, 128, 346 + 24 * at, RIGHT - 128, 22)).join("") +
    bars(roll, about) +
    "^PQ1\n^XZ\n";
}

text({
  encoding: "utf-8",
  rows: TbRolos.current === null ? [] : [TbRolos.current],
  write: (roll) => rollLabel(roll),
});
