// Where the write-off of rolls and the yarn write-off meet: the one opens the other, hands it a roll, and gets back
// under which number and lot the roll was entered.
#pragma once

#include <string>

#include "host/kit/dataset.h"
#include "weaving/roll.h"

namespace yarn {

/// Values of SituacaoFios.
inline constexpr int kYarnOpen = 0;       // nothing decided yet
inline constexpr int kYarnConsumed = 1;   // yarn out, fabric in
inline constexpr int kYarnCancelled = 2;  // given up by the operator

/// What the yarn screen asks of the screen that opened it.
class YarnWriteOffOpener {
 public:
  virtual ~YarnWriteOffOpener() = default;

  /// The roll but for what is handed to the yarn screen by name (fabric, colour, kilograms, client, place).
  virtual weaving::NewRoll CurrentRoll() const = 0;
  /// Lots to use again for later rolls of the same order: fields Codigo, Cor, Lote, Deposito.
  virtual host::Dataset& RememberedLots() = 0;

  // Handed back; meaningful once SituacaoFios is kYarnConsumed.
  int OrdemBaixa = 0;     // number of the roll within its order
  std::string LoteBaixa;  // lot under which the fabric entered stock
  int SituacaoFios = kYarnOpen;
};

/// The yarn screen as its opener uses it: fields first, then ConsultaFiosOF, then one of the ways to consume.
class YarnWriteOff {
 public:
  virtual ~YarnWriteOff() = default;

  double QtdeMalha = 0;  // fabric of this roll, in kilograms
  std::string MaterialMalha;
  std::string CorMalha;
  std::string ClienteMalha;
  std::string LocalMalha;        // place, for every movement of this roll
  bool BaixaAutomatica = false;  // set by the opener, which holds the order, around BaixaFiosReservados

  /// The opener is lent; the screen begins anew for it, without what a person typed or ticked there before. Null takes
  /// the opener off and never throws.
  virtual void SetOpener(YarnWriteOffOpener* opener) = 0;
  /// Lists the yarns that the roll consumes and the stock lots that hold them. Throws DatabaseError; refuses (box,
  /// Abort) an order that is written off in full and still holds reservations.
  virtual void ConsultaFiosOF() = 0;
  /// Consumes from the lots reserved for the order. True when that covered every yarn and the roll was moved; false
  /// leaves what was taken in the lists and nothing in the database. Abort when the movement failed: it has been
  /// undone and told.
  virtual bool BaixaFiosReservados() = 0;
  /// Consumes what is left from the opener's remembered lots, as the operator would; stops at the first that is gone
  /// or holds too little. The outcomes are those of BaixaFiosReservados.
  virtual bool BaixaFiosLembrados() = 0;
};

}  // namespace yarn
