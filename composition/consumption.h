// How much yarn each feeder of a machine takes, and the share of the fabric's weight that this makes.
#pragma once

#include <cstdint>
#include <optional>

#include "host/kit/dataset.h"

namespace composition {

/// Yarn length per course (LFA) that a stitch of this length makes on so many needles; nothing without either.
std::optional<double> CourseLength(double stitch, double needles);

/// Relative consumption of a yarn: yarn length per course (LFA) times feeders (ROCA), over the yarn count (NE). Only
/// meaningful beside the other yarns of the same fabric. `count` must not be 0.
double RelativeConsumption(double course_length, double feeders, std::int64_t count);

/// True when a row has all that its consumption is worked out from (LFA, ROCA and NE above 0).
bool HasKnittingData(const host::Dataset& rows);

/// Puts the consumption of the row in edit from its LFA, ROCA and NE, when it has them. False when it has not;
/// nothing is changed then.
bool SetConsumption(host::Dataset& rows);

/// Sum of Perc over all rows; leaves the cursor on the last row.
double SumOfPercentages(host::Dataset& rows);

/// True when a sum of percentages is 100. The sum of percentages typed with decimals misses 100 by a few units of the
/// fifteenth digit; that is not a difference.
bool IsWhole(double sum);
/// True when a sum of percentages that were worked out is 100 to one decimal.
bool IsNearlyWhole(double sum);

/// Works Consumo and Perc of every row out again, LFA and ROCA taken as whole numbers and a yarn count below 1 as 1.
/// Returns the sum of the percentages. Throws host::InputError when the total consumption is 0 (no share can then be
/// told); Consumo is worked out by then, Perc unchanged.
double Recalculate(host::Dataset& rows);

}  // namespace composition
