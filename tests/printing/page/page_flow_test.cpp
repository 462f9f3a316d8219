// Where pages break, and what stands on each.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "tests/printing/layout_fixture.h"

namespace {

using app::printing::Printout;
using test::Beginning;
using test::CountOf;
using test::Item;
using test::TextOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// 100 mm of body: ten bands of 10 mm a page.
constexpr const char* kSmallPage = "page: { size: [100, 120], margins: [10, 10, 10, 10] }, pageFooter: null, ";

class PageFlow : public test::LayoutTest {
 protected:
  Printout OnSmallPages(const std::string& blocks, const std::string& more = {}) {
    return Blocks(blocks, kSmallPage + more);
  }
  // `count` bands "B1", "B2" ... of 10 mm.
  static std::string Bands(int count, const std::string& start = "B") {
    return "[...Array(" + std::to_string(count) + ").keys()].map(n => band({ height: 10, items: [{ text: '" + start +
           "' + (n + 1), x: 0, y: 0, w: 50 }] }))";
  }
};

double Bottom(const Printout& printout, std::size_t page) {
  double bottom = 0;
  for (const auto& text : printout.pages.at(page).texts) bottom = std::max(bottom, text.y + text.height);
  return bottom;
}

TEST_F(PageFlow, BandsFillPagesToTheirLastMillimetre) {
  const Printout printout = OnSmallPages(Bands(21));
  ASSERT_EQ(printout.pages.size(), 3u);
  EXPECT_EQ(Beginning(printout, "B", 0).size(), 10u);
  EXPECT_EQ(Beginning(printout, "B", 1).front(), "B11");
  EXPECT_DOUBLE_EQ(Item(printout, "B11", 1).y, 10);
  EXPECT_NEAR(Item(printout, "B20", 1).y, 100, 1e-9);
  EXPECT_THAT(Beginning(printout, "B", 2), ElementsAre("B21"));
}

TEST_F(PageFlow, AFullPageIsNotFollowedByAnEmptyOne) {
  EXPECT_EQ(OnSmallPages(Bands(10)).pages.size(), 1u);
  EXPECT_EQ(OnSmallPages("newPage(), " + Bands(10) + ", newPage()").pages.size(), 1u);
  EXPECT_EQ(OnSmallPages("").pages.size(), 1u);
}

TEST_F(PageFlow, ANewPageBeginsWhereItIsAskedFor) {
  const Printout printout = OnSmallPages(Bands(2) + ", newPage(), " + Bands(1, "C"));
  ASSERT_EQ(printout.pages.size(), 2u);
  EXPECT_DOUBLE_EQ(Item(printout, "C1", 1).y, 10);
}

TEST_F(PageFlow, AHeadingStaysWithWhatFollows) {
  const Printout printout = OnSmallPages(Bands(9) + ", heading('Título'), " + Bands(1, "C"));
  ASSERT_EQ(printout.pages.size(), 2u);
  EXPECT_EQ(CountOf(printout, "Título", 0), 0u);
  EXPECT_LT(Item(printout, "Título", 1).y, Item(printout, "C1", 1).y);
}

TEST_F(PageFlow, SpaceAtTheHeadOfAPageIsLeftOut) {
  const Printout printout = OnSmallPages(Bands(10) + ", space(7), " + Bands(1, "C"));
  EXPECT_DOUBLE_EQ(Item(printout, "C1", 1).y, 10);
  EXPECT_DOUBLE_EQ(Item(OnSmallPages("space(7), " + Bands(1)), "B1").y, 17) << "the first page begins as asked for";
}

TEST_F(PageFlow, KeptTogetherBlocksGoToTheNextPageTogether) {
  const Printout printout = OnSmallPages(Bands(8) + ", keepTogether([" + Bands(3, "C") + "]), " + Bands(1, "D"));
  ASSERT_EQ(printout.pages.size(), 2u);
  EXPECT_THAT(Beginning(printout, "C", 0), IsEmpty());
  EXPECT_THAT(Beginning(printout, "C", 1), ElementsAre("C1", "C2", "C3"));
  EXPECT_THAT(Beginning(printout, "D", 1), ElementsAre("D1"));
}

TEST_F(PageFlow, WhatIsKeptTogetherAndHigherThanAPageStillComesOut) {
  const Printout printout = OnSmallPages(Bands(1) + ", keepTogether([" + Bands(25, "C") + "])");
  std::size_t found = 0;
  for (std::size_t page = 0; page < printout.pages.size(); ++page) found += Beginning(printout, "C", page).size();
  EXPECT_EQ(found, 25u);
  EXPECT_EQ(printout.pages.size(), 4u);
}

TEST_F(PageFlow, ALongParagraphBreaksByLineAndLeavesNoLineAlone) {
  // Lines of 3.94 mm: 25 a page.
  for (int lines = 24; lines <= 52; ++lines) {
    const Printout printout =
        OnSmallPages("paragraph([...Array(" + std::to_string(lines) + ").keys()].map(n => 'L' + n).join('\\n'))");
    std::size_t found = 0;
    for (std::size_t page = 0; page < printout.pages.size(); ++page) {
      const std::size_t here = Beginning(printout, "L", page).size();
      EXPECT_GE(here, 2u) << lines << " lines, page " << page + 1;
      EXPECT_LE(Bottom(printout, page), 110.01);
      found += here;
    }
    EXPECT_EQ(found, static_cast<std::size_t>(lines));
  }
}

TEST_F(PageFlow, PagesAreNumberedAndCounted) {
  const Printout printout = Blocks(Bands(60), "page: { size: [100, 120] },");
  ASSERT_GT(printout.pages.size(), 5u);
  const std::string count = std::to_string(printout.pages.size());
  for (std::size_t page = 0; page < printout.pages.size(); ++page) {
    const auto& number = Item(printout, "Página " + std::to_string(page + 1) + " de " + count, page);
    EXPECT_EQ(number.align, app::printing::TextAlign::kRight);
    EXPECT_NEAR(number.y + number.height, 110, 1e-9);
    EXPECT_EQ(CountOf(printout, "10/03/2026 22:15  ADMIN", page), 1u);
  }
}

TEST_F(PageFlow, HeadAndFootAreTheLayoutsOwn) {
  const Printout printout =
      Blocks(Bands(12),
             "page: { size: [100, 120], margins: [10, 10, 10, 10] },"
             "pageHeader: p => [paragraph('Folha ' + p.page + '/' + p.pages), rule()],"
             "pageFooter: p => p.page === p.pages ? band({ height: 20, items: [{ text: 'Fim' }] })"
             "                                    : [],");
  ASSERT_EQ(printout.pages.size(), 2u);
  EXPECT_DOUBLE_EQ(Item(printout, "Folha 1/2", 0).y, 10);
  EXPECT_EQ(CountOf(printout, "Folha 2/2", 1), 1u);
  EXPECT_GT(Item(printout, "B1", 0).y, 10 + 3.9 + 2) << "the body begins below the head";
  EXPECT_NEAR(Item(printout, "Fim", 1).y, 90, 1e-9);
  EXPECT_EQ(CountOf(printout, "Fim", 0), 0u);
  EXPECT_EQ(printout.pages[0].lines.size(), 1u);
}

TEST_F(PageFlow, AHeadThatGrowsWithTheNumberOfPagesHasItsRoom) {
  const Printout printout =
      OnSmallPages(Bands(15), "pageHeader: p => band({ height: p.pages > 1 ? 30 : 0, items: [] }),");
  ASSERT_EQ(printout.pages.size(), 3u);
  EXPECT_NEAR(Item(printout, "B1", 0).y, 42, 1e-9);
}

TEST_F(PageFlow, TheHeadOfATableStandsOnEveryPage) {
  AddRows(60);
  const Printout printout = OnSmallPages("table({ rows: TbLista, columns: [{ field: 'NOME', caption: 'Nome' }] })");
  ASSERT_EQ(printout.pages.size(), 4u);
  for (std::size_t page = 0; page < 4; ++page) {
    EXPECT_EQ(CountOf(printout, "Nome", page), 1u);
    EXPECT_LT(Item(printout, "Nome", page).y, Item(printout, Beginning(printout, "R0", page).front(), page).y);
    EXPECT_LE(Bottom(printout, page), 110.01);
  }
  EXPECT_EQ(Beginning(printout, "R0", 3).back(), "R060");
}

TEST_F(PageFlow, TheHeadIsNotRepeatedAfterTheTable) {
  AddRows(3);
  const Printout printout =
      OnSmallPages("table({ rows: TbLista, columns: [{ field: 'NOME', caption: 'Nome' }] }), " + Bands(15));
  EXPECT_EQ(CountOf(printout, "Nome", 0), 1u);
  EXPECT_EQ(CountOf(printout, "Nome", 1), 0u);
}

// Whatever number of rows comes before it, the group's header has a row of its group below it on its page.
TEST_F(PageFlow, AGroupHeaderNeverStandsAloneAtTheFoot) {
  for (int rows = 15; rows <= 24; ++rows) {
    AddRows(rows + 5, rows);
    const Printout printout = OnSmallPages(
        "table({ rows: TbLista, columns: [{ field: 'NOME', caption: 'Nome' }],"
        " group: { by: 'GRUPO', header: r => 'Grupo ' + r.Grupo } })");
    for (std::size_t page = 0; page < printout.pages.size(); ++page) {
      for (const auto& item : printout.pages[page].texts) {
        if (!item.text.starts_with("Grupo ") && item.text != "Nome") continue;
        EXPECT_TRUE(std::any_of(printout.pages[page].texts.begin(), printout.pages[page].texts.end(),
                                [&](const auto& other) { return other.text[0] == 'R' && other.y > item.y; }))
            << item.text << " alone on page " << page + 1 << " with " << rows << " rows before";
      }
    }
  }
}

TEST_F(PageFlow, AGroupThatGoesOnRepeatsItsHeaderBelowTheTables) {
  AddRows(60, 30);
  const Printout printout = OnSmallPages(
      "table({ rows: TbLista, columns: [{ field: 'NOME', caption: 'Nome' }],"
      " group: { by: 'GRUPO', header: r => 'Grupo ' + r.Grupo } })");
  ASSERT_GE(printout.pages.size(), 3u);
  EXPECT_EQ(CountOf(printout, "Grupo G1", 0), 1u);
  ASSERT_EQ(CountOf(printout, "Grupo G1", 1), 1u);
  EXPECT_LT(Item(printout, "Nome", 1).y, Item(printout, "Grupo G1", 1).y);
  EXPECT_LT(Item(printout, "Grupo G1", 1).y, Item(printout, Beginning(printout, "R0", 1).front(), 1).y);
}

TEST_F(PageFlow, TotalsStayWithTheLastRow) {
  for (int rows = 15; rows <= 24; ++rows) {
    AddRows(rows);
    const Printout printout = OnSmallPages(
        "table({ rows: TbLista, columns: [{ field: 'NOME' }, { field: 'QTDE', total: true }], totals: 'Soma' })");
    const std::size_t last = printout.pages.size() - 1;
    EXPECT_EQ(CountOf(printout, "Soma", last), 1u);
    EXPECT_THAT(Beginning(printout, "R0", last), testing::Not(IsEmpty())) << rows << " rows";
  }
}

TEST_F(PageFlow, ARowIsNotSplit) {
  // Rows of six lines: 24.6 mm each.
  AddRows(9);
  const Printout printout = OnSmallPages(
      "table({ rows: TbLista, columns: [{ caption: 'Nome', wrap: true, value: r => "
      "[1, 2, 3, 4, 5, 6].map(n => r.Nome + '-' + n).join('\\n') }] })");
  for (std::size_t page = 0; page < printout.pages.size(); ++page) {
    EXPECT_EQ(Beginning(printout, "R0", page).size() % 6, 0u);
    EXPECT_LE(Bottom(printout, page), 110.01);
  }
}

TEST_F(PageFlow, ARowHigherThanAPageBreaksByLineBelowARepeatedHead) {
  AddRows(2);
  const Printout printout = OnSmallPages(
      "table({ rows: TbLista, zebra: true, columns: [{ field: 'NOME' }, { caption: 'Texto', wrap: true, value: r => "
      "[...Array(r.Qtde === 1 ? 60 : 2).keys()].map(n => 'L' + r.Qtde + '-' + n).join('\\n') }] })");
  ASSERT_EQ(printout.pages.size(), 3u);
  std::vector<std::string> lines;
  for (std::size_t page = 0; page < 3; ++page) {
    EXPECT_EQ(CountOf(printout, "Texto", page), 1u);
    EXPECT_LE(Bottom(printout, page), 110.01);
    for (const auto& line : Beginning(printout, "L", page)) lines.push_back(line);
  }
  ASSERT_EQ(lines.size(), 62u);
  for (int line = 0; line < 60; ++line) {
    EXPECT_EQ(lines[static_cast<std::size_t>(line)], "L1-" + std::to_string(line));
  }
  EXPECT_EQ(lines.back(), "L2-1");
}

TEST_F(PageFlow, ALineHigherThanAPageDoesNotHangTheProgram) {
  const Printout printout = OnSmallPages("paragraph('X', { size: 400 }), paragraph('Y', { size: 400 })");
  EXPECT_EQ(TextOf(printout), "X\nY\n");
}

TEST_F(PageFlow, DetailDrawsARowWithAFunctionAndGroups) {
  AddRows(4, 2);
  const Printout printout = OnSmallPages(
      "detail({ rows: TbLista, band: (r, n) => [band({ items: [{ text: n + ':' + r.Nome }] }), rule()],"
      " group: { by: r => r.Grupo, header: r => [{ text: 'Grupo ' + r.GRUPO, x: 5, y: 1 }] } })");
  EXPECT_EQ(TextOf(printout), "Grupo G1\n0:R001\n1:R002\nGrupo G2\n2:R003\n3:R004\n");
  EXPECT_DOUBLE_EQ(Item(printout, "Grupo G1").x, 15);
}

}  // namespace
