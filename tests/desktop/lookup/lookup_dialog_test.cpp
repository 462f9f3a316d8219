// A person at the dialog of a lookup: real keys, real mouse.
#include "app/desktop/lookup/lookup_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/services/database_offer.h"
#include "desktop/lookup/person_at_lookup.h"
#include "host/errors.h"
#include "host/kit/screen.h"
#include "support/mill.h"
#include "support/row_offer.h"

namespace {

using app::OfferColumn;
using host::LookupRow;
using test::Becomes;
using test::FaultyOffer;
using test::Seen;

/// Columns with their looks.
class PricedOffer : public app::LookupOffer {
 public:
  const std::vector<OfferColumn>& Columns() const override { return columns_; }
  std::vector<LookupRow> Search(std::string_view /*text*/, std::size_t skip, std::size_t /*count*/) override {
    if (skip > 0) return {};
    return {{{"LOTE", "L1"}, {"QTDE", 1234.5}, {"DATA", host::Date::FromIso("2026-03-10").value()}},
            {{"LOTE", "L2"}, {"QTDE", host::Value()}, {"DATA", host::Value()}}};
  }
  std::optional<LookupRow> Find(std::string_view /*key*/) override { return std::nullopt; }
  std::optional<LookupRow> FindRow(const LookupRow& /*wanted*/) override { return std::nullopt; }

 private:
  std::vector<OfferColumn> columns_ = {
      {"LOTE", "Lote", 10}, {"QTDE", "Quantidade", 10, host::Align::kRight, "0.000"}, {"DATA", "Emissão", 11}};
};

std::vector<LookupRow> Colours() {
  return {{{"COR", "01"}, {"DESCRICAO", "branco"}},
          {{"COR", "02"}, {"DESCRICAO", "azul"}},
          {{"COR", "03"}, {"DESCRICAO", "azul claro"}}};
}

std::vector<LookupRow> Numbered(int count) {
  std::vector<LookupRow> rows;
  for (int i = 0; i < count; ++i) rows.push_back({{"COR", std::to_string(1000 + i)}, {"DESCRICAO", "cor"}});
  return rows;
}

class LookupDialog : public testing::Test {
 protected:
  /// Opens the dialog, lets `act` work at it, and gives up when it is still open then. The key picked, "" for none.
  std::string Ask(app::LookupOffer& offer, const std::string& start, const std::function<void(Seen&)>& act) {
    bool seen_at_all = false;
    QTimer::singleShot(0, [&] {
      QDialog* dialog = nullptr;
      EXPECT_TRUE(Becomes([&] {
        dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        return dialog != nullptr && dialog->isVisible() && QApplication::focusWidget() != nullptr;
      }));
      if (dialog == nullptr) return;
      seen_at_all = true;
      Seen seen(*dialog);
      act(seen);
      if (dialog->isVisible()) dialog->reject();
    });
    picked_ = app::desktop::AskLookup(nullptr, QStringLiteral("Pesquisa: Cor"), offer, lookup_, start);
    EXPECT_TRUE(seen_at_all);
    return picked_ ? picked_->at(offer.Columns().front().name).AsText() : "";
  }

  test::Mill mill_;
  host::Screen screen_{mill_.App(), "TfmTeste", "fmTeste", "Teste"};
  host::TPesquisa lookup_{screen_, "PqCor", "CADCOR", "COR"};
  std::optional<LookupRow> picked_;
};

// --- looking
// ----------------------------------------------------------------------------------------------------------

TEST_F(LookupDialog, OpensWithAllRowsAndTheFirstOneChosen) {
  test::RowOffer offer("COR", Colours());
  Ask(offer, "", [](Seen& seen) {
    EXPECT_EQ(seen.Dialog().windowTitle().toStdString(), "Pesquisa: Cor");
    EXPECT_EQ(seen.Rows(), 3);
    EXPECT_EQ(seen.Current(), "01");
    EXPECT_EQ(seen.Count(), "3 encontrados");
    EXPECT_FALSE(seen.SaysNothingFound());
    EXPECT_TRUE(seen.Line().hasFocus());
    EXPECT_EQ(seen.Header(0), "COR");
  });
}

TEST_F(LookupDialog, StartsFromWhatTheInputHoldsAndTypingReplacesIt) {
  test::RowOffer offer("COR", Colours());
  Ask(offer, "azul", [](Seen& seen) {
    EXPECT_EQ(seen.Line().selectedText().toStdString(), "azul");
    EXPECT_EQ(seen.Count(), "2 encontrados");
    seen.Type("bra");
    EXPECT_EQ(seen.Line().text().toStdString(), "bra");
    EXPECT_TRUE(seen.BecomesFound("1 encontrado"));
    EXPECT_EQ(seen.Current(), "01");
  });
}

TEST_F(LookupDialog, OpensWithAllRowsWhenTheInputHoldsWhatIsNone) {
  test::RowOffer offer("COR", Colours());
  Ask(offer, "77", [](Seen& seen) {
    EXPECT_EQ(seen.Line().text().toStdString(), "");
    EXPECT_EQ(seen.Count(), "3 encontrados");
    seen.Type("azul");
    EXPECT_TRUE(seen.BecomesFound("2 encontrados"));
  });
}

TEST_F(LookupDialog, SearchesAsItIsTyped) {
  test::RowOffer offer("COR", Colours());
  Ask(offer, "", [](Seen& seen) {
    seen.Type("azul");
    EXPECT_TRUE(seen.BecomesFound("2 encontrados"));
    seen.Type(" c");
    EXPECT_TRUE(seen.BecomesFound("1 encontrado"));
    EXPECT_EQ(seen.Current(), "03");
    for (int i = 0; i < 6; ++i) Seen::Key(Qt::Key_Backspace);
    EXPECT_TRUE(seen.BecomesFound("3 encontrados"));
  });
}

TEST_F(LookupDialog, QuickTypingIsSearchedOnce) {
  FaultyOffer offer("COR", Colours());
  Ask(offer, "", [&](Seen& seen) {
    const int before = offer.searches;
    seen.Type("azul");
    EXPECT_TRUE(seen.BecomesFound("2 encontrados"));
    EXPECT_EQ(offer.searches, before + 1);
  });
}

TEST_F(LookupDialog, SaysSoWhenNothingIsFound) {
  test::RowOffer offer("COR", Colours());
  const auto picked = Ask(offer, "", [](Seen& seen) {
    seen.Type(QStringLiteral("não há"));
    EXPECT_TRUE(Becomes([&] { return seen.SaysNothingFound(); }));
    EXPECT_EQ(seen.Rows(), 0);
    EXPECT_EQ(seen.Count(), "");
    EXPECT_FALSE(seen.MayChoose());
    for (const auto key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Up}) Seen::Key(key);
    EXPECT_TRUE(seen.Dialog().isVisible());
    seen.Line().selectAll();
    seen.Type("azul");
    EXPECT_TRUE(seen.BecomesFound("2 encontrados"));
    EXPECT_FALSE(seen.SaysNothingFound());
  });
  EXPECT_EQ(picked, "");
}

TEST_F(LookupDialog, ShowsNumbersAndDatesAsPeopleHereWriteThem) {
  PricedOffer offer;
  Ask(offer, "", [](Seen& seen) {
    EXPECT_EQ(seen.Header(1), "Quantidade");
    EXPECT_EQ(seen.Cell(0, 1), "1234,500");
    EXPECT_EQ(seen.Cell(0, 2), "10/03/2026");
    EXPECT_EQ(seen.Cell(1, 1), "");
    EXPECT_EQ(seen.Cell(1, 2), "");
    EXPECT_TRUE(seen.AlignmentOf(0, 1).testFlag(Qt::AlignRight));
    EXPECT_TRUE(seen.AlignmentOf(0, 0).testFlag(Qt::AlignLeft));
  });
}

TEST_F(LookupDialog, ShowsTheColumnsWholeWhereThereIsRoom) {
  auto rows = Colours();
  rows[2]["DESCRICAO"] = "azul muito claro, quase branco";
  test::RowOffer offer("COR", rows);
  Ask(offer, "", [](Seen& seen) {
    QTableView& table = seen.Table();
    EXPECT_GE(table.columnWidth(1),
              table.fontMetrics().horizontalAdvance(QStringLiteral("azul muito claro, quase branco")));
    EXPECT_EQ(table.columnWidth(0) + table.columnWidth(1), table.viewport()->width());
    EXPECT_LE(seen.Dialog().width(), 900);
  });
}

// --- choosing
// ---------------------------------------------------------------------------------------------------------

TEST_F(LookupDialog, EnterPicksTheRowUnderTheCursor) {
  test::RowOffer offer("COR", Colours());
  EXPECT_EQ(Ask(offer, "",
                [](Seen& seen) {
                  Seen::Key(Qt::Key_Down);
                  EXPECT_EQ(seen.Current(), "02");
                  EXPECT_TRUE(seen.Line().hasFocus());
                  Seen::Key(Qt::Key_Return);
                  EXPECT_FALSE(seen.Dialog().isVisible());
                }),
            "02");
  EXPECT_EQ(picked_->at("DESCRICAO").AsText(), "azul");
}

TEST_F(LookupDialog, TheKeypadsEnterPicksToo) {
  test::RowOffer offer("COR", Colours());
  EXPECT_EQ(Ask(offer, "02", [](Seen&) { Seen::Key(Qt::Key_Enter); }), "02");
}

TEST_F(LookupDialog, EnterRightAfterTypingPicksWhatWasTyped) {
  test::RowOffer offer("COR", Colours());
  EXPECT_EQ(Ask(offer, "",
                [](Seen& seen) {
                  seen.Type("claro");
                  Seen::Key(Qt::Key_Return);
                }),
            "03");
}

TEST_F(LookupDialog, EscGivesUp) {
  test::RowOffer offer("COR", Colours());
  EXPECT_EQ(Ask(offer, "02",
                [](Seen& seen) {
                  Seen::Key(Qt::Key_Escape);
                  EXPECT_FALSE(seen.Dialog().isVisible());
                }),
            "");
}

TEST_F(LookupDialog, ADoubleClickPicks) {
  test::RowOffer offer("COR", Colours());
  EXPECT_EQ(Ask(offer, "",
                [](Seen& seen) {
                  QTableView& table = seen.Table();
                  const QPoint third = table.visualRect(table.model()->index(2, 0)).center();
                  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, third);
                  EXPECT_EQ(seen.Current(), "03");
                  EXPECT_TRUE(seen.Line().hasFocus());
                  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, third);
                }),
            "03");
}

TEST_F(LookupDialog, ButtonsServeTheMouse) {
  test::RowOffer offer("COR", Colours());
  const auto press = [](const char* name) {
    return [name](Seen& seen) {
      QTest::mouseClick(seen.Dialog().findChild<QPushButton*>(name), Qt::LeftButton);
      EXPECT_FALSE(seen.Dialog().isVisible());
    };
  };
  EXPECT_EQ(Ask(offer, "", press("BtnEscolher")), "01");
  EXPECT_EQ(Ask(offer, "", press("BtnCancelar")), "");
}

TEST_F(LookupDialog, ARowThatIsGoneIsNotPicked) {
  FaultyOffer offer("COR", Colours());
  offer.gone = true;
  EXPECT_EQ(Ask(offer, "",
                [](Seen& seen) {
                  Seen::Key(Qt::Key_Return);
                  EXPECT_TRUE(seen.Dialog().isVisible());
                  EXPECT_EQ(seen.Count(), "O registro escolhido não existe mais.");
                }),
            "");
}

// --- long lists
// -------------------------------------------------------------------------------------------------------

TEST_F(LookupDialog, ReadsALongListPageByPage) {
  test::RowOffer offer("COR", Numbered(250));
  EXPECT_EQ(Ask(offer, "",
                [](Seen& seen) {
                  EXPECT_EQ(seen.Rows(), 100);
                  EXPECT_EQ(seen.Count(), "100 primeiros...");
                  for (int i = 0; i < 100; ++i) Seen::Key(Qt::Key_Down);
                  EXPECT_EQ(seen.Current(), "1100");
                  EXPECT_EQ(seen.Count(), "200 primeiros...");
                  for (int i = 0; i < 40; ++i) Seen::Key(Qt::Key_PageDown);
                  EXPECT_EQ(seen.Current(), "1249");
                  EXPECT_EQ(seen.Count(), "250 encontrados");
                  Seen::Key(Qt::Key_PageUp);
                  EXPECT_LT(seen.CurrentRow(), 249);
                  EXPECT_GT(seen.CurrentRow(), 200);
                  Seen::Key(Qt::Key_Return);
                })
                .substr(0, 2),
            "12");
}

TEST_F(LookupDialog, ScrollingToTheEndReadsOn) {
  test::RowOffer offer("COR", Numbered(250));
  Ask(offer, "", [](Seen& seen) {
    QScrollBar* bar = seen.Table().verticalScrollBar();
    bar->setValue(bar->maximum());
    EXPECT_TRUE(seen.BecomesFound("200 primeiros..."));
    EXPECT_EQ(seen.CurrentRow(), 0);
  });
}

TEST_F(LookupDialog, ExactlyOnePageIsTheWholeList) {
  test::RowOffer offer("COR", Numbered(100));
  Ask(offer, "", [](Seen& seen) { EXPECT_EQ(seen.Count(), "100 encontrados"); });
}

TEST_F(LookupDialog, TheRowOfTheKeyTypedIsChosen) {
  auto rows = Colours();
  rows[0]["DESCRICAO"] = "como a 03";
  test::RowOffer offer("COR", rows);
  EXPECT_EQ(Ask(offer, "",
                [](Seen& seen) {
                  seen.Type("03");
                  EXPECT_TRUE(seen.BecomesFound("2 encontrados"));
                  EXPECT_EQ(seen.Current(), "03");
                  Seen::Key(Qt::Key_Return);
                }),
            "03");
}

TEST_F(LookupDialog, TheRowOfTheKeyTypedIsThereEvenIfItComesPagesLater) {
  auto rows = Numbered(300);
  rows[299]["COR"] = "1";
  test::RowOffer offer("COR", rows);
  EXPECT_EQ(Ask(offer, "1",
                [](Seen& seen) {
                  EXPECT_EQ(seen.Current(), "1");
                  EXPECT_EQ(seen.CurrentRow(), 0);
                  for (int i = 0; i < 40; ++i) Seen::Key(Qt::Key_PageDown);
                  EXPECT_EQ(seen.Count(), "300 encontrados");
                  int times = 0;
                  for (int row = 0; row < seen.Rows(); ++row) times += seen.Cell(row, 0) == "1" ? 1 : 0;
                  EXPECT_EQ(times, 1);
                  for (int i = 0; i < 40; ++i) Seen::Key(Qt::Key_PageUp);
                  Seen::Key(Qt::Key_Return);
                }),
            "1");
}

TEST_F(LookupDialog, RowsThatShareTheKeyTypedAreAllThereOnce) {
  auto rows = Numbered(300);
  for (const std::size_t at : {150u, 151u, 299u}) rows[at]["COR"] = "1";
  rows[299]["DESCRICAO"] = "outra";
  test::RowOffer offer("COR", rows);
  Ask(offer, "1", [](Seen& seen) {
    EXPECT_EQ(seen.Current(), "1");
    EXPECT_EQ(seen.CurrentRow(), 0);
    for (int i = 0; i < 40; ++i) Seen::Key(Qt::Key_PageDown);
    EXPECT_EQ(seen.Count(), "300 encontrados");
    int times = 0;
    int others = 0;
    for (int row = 0; row < seen.Rows(); ++row) {
      times += seen.Cell(row, 0) == "1" ? 1 : 0;
      others += seen.Cell(row, 1) == "outra" ? 1 : 0;
    }
    EXPECT_EQ(times, 3);
    EXPECT_EQ(others, 1);
  });
}

// --- trouble
// ----------------------------------------------------------------------------------------------------------

TEST_F(LookupDialog, AnOfferThatCannotBeReadDoesNotOpen) {
  FaultyOffer offer("COR", Colours());
  offer.fail_in = 1;
  EXPECT_THROW(app::desktop::AskLookup(nullptr, "Pesquisa", offer, lookup_, ""), host::DatabaseError);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(LookupDialog, AnErrorWhileTypingClosesItAndReachesTheCaller) {
  FaultyOffer offer("COR", Colours());
  EXPECT_THROW(Ask(offer, "",
                   [&](Seen& seen) {
                     offer.fail_in = 1;
                     seen.Type("az");
                     EXPECT_TRUE(Becomes([&] { return !seen.Dialog().isVisible(); }));
                   }),
               host::DatabaseError);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(LookupDialog, AnErrorWhileReadingOnClosesItAndReachesTheCaller) {
  FaultyOffer offer("COR", Numbered(250));
  EXPECT_THROW(Ask(offer, "",
                   [&](Seen& seen) {
                     offer.fail_in = 1;
                     QScrollBar* bar = seen.Table().verticalScrollBar();
                     bar->setValue(bar->maximum());
                     EXPECT_TRUE(Becomes([&] { return !seen.Dialog().isVisible(); }));
                   }),
               host::DatabaseError);
}

TEST_F(LookupDialog, AnErrorAtEnterReachesTheCaller) {
  FaultyOffer offer("COR", Colours());
  EXPECT_THROW(Ask(offer, "",
                   [&](Seen& seen) {
                     offer.fail_in = 1;
                     seen.Type("az");
                     Seen::Key(Qt::Key_Return);
                     EXPECT_TRUE(Becomes([&] { return !seen.Dialog().isVisible(); }));
                   }),
               host::DatabaseError);
}

// --- a mill with many materials
// ---------------------------------------------------------------------------------------

TEST_F(LookupDialog, FindsAMaterialAmongFiftyThousand) {
  constexpr int k_materials = 50000;
  auto& database = mill_.Db();
  database.BeginAction();
  for (int i = 0; i < k_materials; ++i) {
    database.Execute(
        "INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, UNIDADE, OBSERVACAO) VALUES (?, ?, ?, ?)",
        {"M" + std::to_string(100000 + i), (i % 2 == 0 ? "Malha piquê " : "Fio de algodão ") + std::to_string(i), "KG",
         i == 41234 ? host::Value("Só sob encomenda.") : host::Value()});
  }
  database.EndAction(app::firebird::Database::Outcome::kOk);
  host::TPesquisa materials(screen_, "PqMaterial", "MATERIAL", "CODIGO");
  const auto offer = app::services::NewLookupOffer(database, materials);
  EXPECT_EQ(Ask(*offer, "",
                [](Seen& seen) {
                  EXPECT_EQ(seen.Header(0), "Código");
                  EXPECT_EQ(seen.Header(1), "Descrição");
                  EXPECT_EQ(seen.Count(), "100 primeiros...");
                  seen.Type("41234");
                  EXPECT_TRUE(seen.BecomesFound("1 encontrado"));
                  seen.Line().selectAll();
                  seen.Type(QStringLiteral("ALGODAO 101233"));
                  EXPECT_TRUE(Becomes([&] { return seen.Rows() == 1 && seen.Current() == "M101233"; }));
                  seen.Line().selectAll();
                  seen.Type("m149999");
                  EXPECT_TRUE(Becomes([&] { return seen.Rows() == 1 && seen.Current() == "M149999"; }));
                  seen.Line().selectAll();
                  seen.Type(QStringLiteral("PIQUÊ 41234"));
                  Seen::Key(Qt::Key_Return);
                }),
            "M141234");
  EXPECT_EQ(picked_->at("OBSERVACAO").AsText(), "Só sob encomenda.");
}

}  // namespace
