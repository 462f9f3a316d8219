// The order for the mill on a line printer: 80 columns, 60 lines a page, code page 850.
// Datasets: QryRelatorio, TbFios, QryRaport, TbRolos; see docs/layouts.md and the drawn layout beside this one.
"use strict";

const COLUMNS = 80;
const LINES = 60;

const plain = (value) => value === null || value === undefined ? "" : String(value).trim();
const joined = (...parts) => parts.map(plain).filter((part) => part !== "").join(" ");
const positive = (value, format) => value > 0 ? number(value, format) : "";
const order = QryRelatorio.first || {};

// A column: [width, text], the width negative for text at the right. What is too long is cut.
const columns = (...cells) => cells.map(([width, shown]) => {
  const room = Math.abs(width);
  const words = plain(shown).substr(0, room);
  return width < 0 ? words.padStart(room) : words.padEnd(room);
}).join(" ").replace(/ +$/, "");

const ruled = (sign) => sign.repeat(COLUMNS);

// Breaks between words, within a word that is longer than the line.
function wrapped(words, room) {
  const lines = [];
  for (const paragraph of plain(words).split(/\r\n|\r|\n/)) {
    let line = "";
    for (let word of paragraph.split(/\s+/)) {
      while (word.length > room) {
        if (line !== "") lines.push(line);
        line = "";
        lines.push(word.substr(0, room));
        word = word.substr(room);
      }
      if (line !== "" && line.length + 1 + word.length > room) {
        lines.push(line);
        line = word;
      } else {
        line = line === "" ? word : line + " " + word;
      }
    }
    lines.push(line);
  }
  return lines;
}

const section = (title) => ["", title.toUpperCase(), ruled("-")];

// --- parts, as lists of lines; a list within a list is not broken over two pages -------------------------------------

function header() {
  return [
    columns([44, "Malharia: " + joined(order.MALHARIA, order.NOME)], [-35, "Data: " + date(order.DT_INICIO)]),
    columns([44, "Máquina.: " + joined(order.MAQUINA, order.DESCMAQ)], [-35, "Prazo: " + plain(order.PERIODO)]),
    columns([44, "Fluxo...: " + joined(order.FLUXO, order.DESC_FLUXO)], [-35, "Ficha: " + plain(order.FICHA)]),
    columns([44, "Depósito: " + joined(order.DEPOSITO, order.DESC_DEP_ENT)],
            [-35, "RPM: " + positive(order.RPM, "0") + "  Ponto: " + positive(order.TPONTO, "0.000")]),
  ];
}

// One list per item; rows of one item that differ in technical data only are one.
function items() {
  const seen = new Set();
  const all = [];
  for (const row of QryRelatorio.rows) {
    const key = [row.CODIGO, row.COR, row.PEDIDO, row.QTDE, row.CICLOS, row.OBS_ITEM].map(plain).join("\n");
    if (plain(row.CODIGO) === "" || seen.has(key)) continue;
    seen.add(key);
    const technical = [["Kg/rolo", row.KG_ROLO, "0.00"], ["Larg", row.LARGURA, "0.00"], ["Gram", row.GRAMATURA, "0.##"],
                       ["Diâm", row.DIAMETRO, "0.##"], ["Fin", row.FINURA, "0.##"], ["Ag", row.ALIMENTADORES, "0.##"],
                       ["Ciclos", row.CICLOS, "0"], ["RPM", row.RPM_MAT, "0"]]
      .filter(([, value]) => value > 0).map(([name, value, format]) => name + " " + number(value, format)).join("  ");
    const remarks = [technical, joined(row.PEDIDO && "Pedido", row.PEDIDO), row.OBS_ITEM,
                     plain(row.OBS_CUSTO_MALHA) && "Preço: " + plain(row.OBS_CUSTO_MALHA)].map(plain)
      .filter((one) => one !== "").map((one) => wrapped(one, COLUMNS - 4)).reduce((lines, one) => lines.concat(one), []);
    all.push([columns([15, row.CODIGO], [24, row.DESCRICAO], [19, joined(row.COR, row.DESCCOR)],
                      [-15, number(row.QTDE || 0, "#,##0.000")], [3, row.UNIDADE]),
              ...remarks.map((line) => "    " + line)]);
  }
  const head = [...section("Itens"), columns([15, "Código"], [24, "Malha"], [19, "Cor"], [-15, "Quantidade"], [3, "Un."])];
  return all.length === 0 ? [[...section("Itens"), "Nenhum item."]] : [head.concat(all[0]), ...all.slice(1)];
}

function yarns() {
  const head = [...section("Fios"), columns([12, "Código"], [21, "Fio"], [12, "Cor"], [-6, "LFA"], [-4, "Roca"],
                                            [-5, "Ponto"], [-10, "Consumo"], [3, "Un."])];
  const lines = TbFios.rows.map((yarn) =>
    columns([12, yarn.CODIGO], [21, yarn.DESCRICAO], [12, joined(yarn.COR, yarn.DESCCOR)], [-6, positive(yarn.LFA, "0.##")],
            [-4, positive(yarn.ROCA, "0")], [-5, positive(yarn.MILIMETRO, "0.00")], [-10, number(yarn.CONSUMO || 0, "0.000")],
            [3, yarn.UNIDADE]));
  return lines.length === 0 ? [[...section("Fios"), "Nenhum fio na composição das malhas."]]
    : [head.concat(lines[0]), ...lines.slice(1)];
}

function patterns() {
  const ordered = new Set(QryRelatorio.rows.map((row) => plain(row.CODIGO) + "\n" + plain(row.COR)));
  const rows = QryRaport.rows.filter((row) => ordered.has(plain(row.MATERIAL) + "\n" + plain(row.COR)));
  const parts = [];
  let last = "";
  for (const row of rows) {
    const lines = [];
    if (parts.length === 0) lines.push(...section("Raport"));
    const group = joined(row.MATERIAL, "Cor", row.COR);
    if (group !== last) lines.push(group);
    last = group;
    lines.push(columns([-4, row.ORDEM], [30, joined(row.CODIGO, row.DESCRICAO)], [20, joined(row.COR_I, row.DESC_COR)],
                       [-6, positive(row.MILIMETROS, "0.##")], [-4, positive(row.ALIMENTADORES, "0.##")], [11, row.OBSERVACAO]));
    parts.push(lines);
  }
  return parts;
}

function remarks() {
  if (plain(order.OBSERVACAO) === "") return [];
  const lines = wrapped(order.OBSERVACAO, COLUMNS);
  return [[...section("Observações"), lines[0]], ...lines.slice(1)];
}

// Each roll with room for its weight.
function rolls() {
  const all = TbRolos.rows;
  const lines = [];
  for (let at = 0; at < all.length; at += 5) {
    lines.push(all.slice(at, at + 5).map((roll) => plain(roll.NR).padEnd(4) + " ________").join("   "));
  }
  return lines.length === 0 ? [] : [[...section("Rolos esperados (" + all.length + ")"), lines[0]], ...lines.slice(1)];
}

const signatures = () => [["", "", "", columns([24, "_".repeat(24)], [25, "_".repeat(25)], [24, "_".repeat(24)]),
                           columns([24, "Emitido por"], [25, "Recebido na malharia"], [24, "Conferido no retorno"])]];

// --- pages -----------------------------------------------------------------------------------------------------------

function pages() {
  const room = LINES - 5;
  const sheets = [[]];
  const parts = [header(), ...items(), ...yarns(), ...patterns(), ...remarks(), ...rolls(), ...signatures()];
  for (const part of parts.map((one) => Array.isArray(one) ? one : [one])) {
    if (sheets[sheets.length - 1].length + part.length > room && part.length <= room) sheets.push([]);
    for (const line of part) {
      if (sheets[sheets.length - 1].length === room) sheets.push([]);
      sheets[sheets.length - 1].push(line);
    }
  }
  return sheets;
}

function printed() {
  const sheets = pages();
  return sheets.map((lines, at) => [
    columns([48, info.company], [-31, "Página " + (at + 1) + " de " + sheets.length]),
    columns([48, "ORDEM DE TECELAGEM " + plain(order.NUMERO)], [-31, joined(date(info.moment), time(info.moment), info.user)]),
    ruled("="), ...lines, "",
  ].join("\r\n")).join("\f") + "\f";
}

text({ encoding: "cp850", write: () => printed() });
