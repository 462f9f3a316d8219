// The order for the mill, as the order screen prints it.
const orders = db.query("SELECT NUMERO FROM {TECEL} WHERE NUMERO = ?", [given.order]);
if (orders.length === 0) throw `A ordem ${given.order} não existe.`;

const told = () => messages().map(m => m.text).join(" ");
const s = open("TfmCadLoteTec");
s.type("EdtNumero", given.order);
if (s.text("EdtNumero") !== given.order) throw told() || `A ordem ${given.order} não pôde ser aberta.`;
if (!s.click("BtnImprimir")) throw told() || `A ordem ${given.order} não pôde ser impressa.`;
