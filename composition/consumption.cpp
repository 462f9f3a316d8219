#include "composition/consumption.h"

#include <algorithm>
#include <cmath>

#include "host/decimal.h"
#include "host/errors.h"

namespace composition {

std::optional<double> CourseLength(double stitch, double needles) {
  if (!(needles > 0 && stitch > 0)) return std::nullopt;
  return stitch * needles;
}

double RelativeConsumption(double course_length, double feeders, std::int64_t count) {
  return (course_length * 0.59 * feeders) / (static_cast<double>(count) * 100);
}

bool HasKnittingData(const host::Dataset& rows) {
  return rows["LFA"].AsFloat() > 0 && rows["ROCA"].AsFloat() > 0 && rows["NE"].AsInteger() > 0;
}

bool SetConsumption(host::Dataset& rows) {
  if (!HasKnittingData(rows)) return false;
  rows["Consumo"].Set(RelativeConsumption(rows["LFA"].AsFloat(), rows["ROCA"].AsFloat(), rows["NE"].AsInteger()));
  return true;
}

double SumOfPercentages(host::Dataset& rows) {
  double sum = 0;
  for (rows.First(); !rows.Eof(); rows.Next()) sum += rows["Perc"].AsFloat();
  return sum;
}

bool IsWhole(double sum) { return host::RoundTo(sum, 9) == 100; }

bool IsNearlyWhole(double sum) { return host::RoundTo(sum, 1) == 100; }

double Recalculate(host::Dataset& rows) {
  double total = 0;
  for (rows.First(); !rows.Eof(); rows.Next()) {
    // Machines are set in whole feeders and courses; a yarn without count still takes its part.
    const auto course_length = static_cast<double>(rows["LFA"].AsInteger());
    const auto feeders = static_cast<double>(rows["ROCA"].AsInteger());
    const std::int64_t count = std::max<std::int64_t>(rows["NE"].AsInteger(), 1);
    const double consumption = RelativeConsumption(course_length, feeders, count);
    rows.Edit();
    rows["Consumo"].Set(consumption);
    rows.Post();
    total += consumption;
  }
  if (total == 0 || !std::isfinite(total)) throw host::InputError("O consumo total dos fios é zero.");

  double sum = 0;
  for (rows.First(); !rows.Eof(); rows.Next()) {
    const double percentage = rows["Consumo"].AsFloat() / total * 100;
    rows.Edit();
    rows["Perc"].Set(percentage);
    rows.Post();
    sum += percentage;
  }
  return sum;
}

}  // namespace composition
