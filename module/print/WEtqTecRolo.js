// The label of one roll, as the write-off screen prints it.
const orders = db.query("SELECT NUMERO FROM {TECEL} WHERE NUMERO = ?", [given.order]);
if (orders.length === 0) throw `A ordem ${given.order} não existe.`;
const rolls = db.query("SELECT ORDEM FROM {TECELB} WHERE NUMERO = ? AND ORDEM = ?", [given.order, Number(given.roll)]);
if (rolls.length === 0) throw `A ordem ${given.order} não tem o rolo ${given.roll}.`;

const told = () => messages().map(m => m.text).join(" ");
const s = open("TfmMovBaiTec");
s.type("EdtLote", given.order);
const row = s.rows("TbRolos").findIndex(roll => Number(roll.Ordem) === Number(given.roll));
if (row < 0) throw told() || `A tela não mostra o rolo ${given.roll} da ordem ${given.order}.`;
s.choose("CbImpressao", given.type === "T" ? "Texto" : "Windows");
s.enter("TbRolos");
s.select("TbRolos", row);
if (!s.menu("Imprimir Etiqueta")) throw told() || `A etiqueta do rolo ${given.roll} não pôde ser impressa.`;
