// Random work on a dataset, checked against a plain list after every step.
#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "dataset_fixture.h"

namespace {

using host::DatasetCursor;

// Whatever is done, the view is what filter and index say of the rows, and the cursor stands on a row of it.
class RandomEdits : public test::DatasetTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  struct Item {
    std::size_t id;
    std::string code;
    double quantity;
  };
  using Shown = std::vector<std::pair<std::string, double>>;

  std::size_t Below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }

  void Fill() {
    data["Codigo"].Set(std::string(1, static_cast<char>('A' + Below(26))));
    data["Qtde"].Set(static_cast<double>(Below(10)));
  }
  Item Current() { return {data.CurrentId(), data["Codigo"].AsText(), data["Qtde"].AsFloat()}; }
  // The list's entry of a row picked at random; the end without rows.
  std::vector<Item>::iterator GoSomewhere() {
    if (data.RecordCount() == 0) return items_.end();
    data.GoTo(1 + Below(data.RecordCount()));
    return std::find_if(items_.begin(), items_.end(), [this](const Item& item) { return item.id == data.CurrentId(); });
  }

  void AppendOne() {
    data.Append();
    Fill();
    const Item item = Current();
    if (Below(4) == 0) {
      data.Cancel();
    } else {
      data.Post();
      items_.push_back(item);
    }
  }
  void EditOne() {
    const auto item = GoSomewhere();
    if (item == items_.end()) return;
    data.Edit();
    Fill();
    if (Below(3) == 0) {
      data.Cancel();
    } else {
      *item = Current();
      data.Post();
    }
  }
  void DeleteOne() {
    const auto item = GoSomewhere();
    if (item == items_.end()) return;
    data.Delete();
    items_.erase(item);
  }
  void ChangeView() {
    if (Below(2) == 0) {
      filtered_ = !filtered_;
      data.SetFilter("Qtde > 4");
      data.SetFiltered(filtered_);
    } else {
      const std::vector<std::string> indexes = {"", "Codigo", "Qtde;Codigo"};
      index_ = indexes[Below(indexes.size())];
      data.SetIndex(index_);
    }
  }

  Shown Expected() const {
    Shown expected;
    for (const Item& item : items_) {
      if (!filtered_ || item.quantity > 4) expected.emplace_back(item.code, item.quantity);
    }
    std::stable_sort(expected.begin(), expected.end(), [this](const auto& left, const auto& right) {
      if (index_ == "Codigo") return left.first < right.first;
      if (index_.empty()) return false;
      return std::tie(left.second, left.first) < std::tie(right.second, right.first);
    });
    return expected;
  }
  Shown Actual() const {
    Shown shown;
    for (std::size_t row = 1; row <= data.RecordCount(); ++row) {
      shown.emplace_back(data.ValueAt(row, 0).AsText(), data.ValueAt(row, 2).AsFloat());
    }
    return shown;
  }

  const std::vector<Item>& Items() const { return items_; }

 private:
  std::mt19937 random_{GetParam()};
  std::vector<Item> items_;  // in the order of arrival
  bool filtered_ = false;
  std::string index_;
};

TEST_P(RandomEdits, KeepOrderCountAndCursor) {
  for (int step = 0; step < 600; ++step) {
    switch (Below(6)) {
      case 0:
      case 1:
        AppendOne();
        break;
      case 2:
      case 3:
        EditOne();
        break;
      case 4:
        DeleteOne();
        break;
      default:
        ChangeView();
        break;
    }
    ASSERT_EQ(Actual(), Expected()) << "step " << step;
    ASSERT_EQ(DatasetCursor(data).RecordCount(), Items().size());
    ASSERT_EQ(data.CurrentId() != 0, data.RecordCount() != 0);
    ASSERT_EQ(data.IdAt(data.RecNo()), data.CurrentId());
  }
  EXPECT_FALSE(Items().empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, ::testing::Range(1u, 9u));

}  // namespace
