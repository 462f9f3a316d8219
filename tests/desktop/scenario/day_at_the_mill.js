// A day at the small mill as a script. The same day by keys stands in same_database_test.cpp: what is done here is done
// there, step by step, and both must leave the same database.
"use strict";

const must = (done, what) => assert(done, what + ": " + JSON.stringify(messages()));

// The composition of a fabric that had none.
const c = open("TFmCadComposi");
c.type("EdtCodMat", "F2");
c.type("EdtKgRolo", 22);
c.type("EdtAgulhas", 2000);
must(c.append("TbComposi", [["Codigo", "Y1"], ["Milimetros", 3], ["ROCA", 48], ["01", "CR"], ["02", "CR"]]), "Y1");
answer("Cor não cadastrada no Material", "yes");
must(c.append("TbComposi", [["Codigo", "Y2"], ["Milimetros", 3], ["ROCA", 32], ["01", "01"], ["02", "CR"]]), "Y2");
answer("Composição incorreta", "yes");
must(c.click("btnGravar"), "composition");
c.close();

// An order of two items, its yarn reserved in three lots.
const o = open("TfmCadLoteTec");
o.type("EdtNumero", "");
o.type("EdtMalharia", "M00001");
o.type("EdtFicha", "F-1");
o.type("EdtPrazo", "30");
o.type("EdtMaquina", "MQ1");
o.type("EdtPonto", 3.6);
o.type("EdtDeposito", "DF");
must(o.append("TbItens", {Codigo: "F1", Cor: "01", Qtde: 100}), "F1");
must(o.append("TbItens", {Codigo: "F2", Cor: "02", Qtde: 40, Obs: "não lavar"}), "F2");
must(o.click("BtnGravar"), "order 1");
o.type("EdtNumero", "000001");
o.select("TbFios", {Codigo: "Y1"});
o.select("TbEstoque", {Lote: "L1", Deposito: "D1"});
must(o.set("TbEstoque", {Sel: true, Qtde_Res: 75}), "Y1 L1");
o.select("TbEstoque", {Lote: "L2"});
must(o.set("TbEstoque", {Sel: true}), "Y1 L2");
o.select("TbFios", {Codigo: "Y2"});
o.select("TbEstoque", {Lote: "L1"});
must(o.set("TbEstoque", {Qtde_Res: 58.182, Sel: true}), "Y2 L1");
must(o.click("BtnGravar"), "reservations");

// A small one without reservations.
o.type("EdtNumero", "");
o.type("EdtMalharia", "M00001");
o.type("EdtDeposito", "DF");
must(o.append("TbItens", {Codigo: "F1", Cor: "01", Qtde: 30}), "F1");
must(o.click("BtnGravar"), "order 2");

// Rolls come back: of reserved yarn, and from lots chosen by hand.
const w = open("TfmMovBaiTec");
w.type("EdtLote", "000001");
w.type("EdtNFRet", "NF77");
w.type("EdtFunc", "P1");
w.type("EdtQtde", 20.3);
must(w.click("BtnConfirma"), "roll 1");
w.type("EdtQtde", 20.3);
w.click("BtnConfirma");
assertEqual(messages().map((box) => box.text), ["Baixa já Realizada."]);
w.select("TbItens", {Codigo: "F2"});
w.type("EdtQtde", 12);
must(w.click("BtnConfirma"), "roll 2");
w.type("EdtLote", "000002");
w.type("EdtQtde", 10.3);
modal("TFmMovBaiFio", (yarn) => {
  yarn.select("TbEst", {Lote: "L2", Deposito: "D1"});
  yarn.click("BitBtn1");
  yarn.select("TbEst", {Lote: "L3", Deposito: "D2"});
  yarn.click("BitBtn1");
});
must(w.click("BtnConfirma"), "roll 3");
w.set("TbItens", {Baixada: true});
w.close();

// The second order once more, which was a mistake; and more of the first.
o.type("EdtNumero", "000002");
answer("Deseja duplicar", "yes");
must(o.click("BtnDuplicar"), "copy");
assertEqual(o.text("EdtNumero"), "000003");
o.leave("EdtNumero");
answer("Deseja excluir totalmente", "yes");
must(o.click("BtnExcluir"), "deletion");
o.type("EdtNumero", "000001");
o.select("TbItens", {Codigo: "F1"});
must(o.set("TbItens", {Qtde: 110}), "more");
must(o.click("BtnGravar"), "order 1 again");
o.close();
