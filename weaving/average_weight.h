// When a roll is heavier than a roll of its fabric should be.
#pragma once

namespace weaving {

/// The greatest average weight, in kilograms, that goes without a question: half as much again as the standard roll,
/// the half in whole kilograms.
double HeaviestRoll(double standard);

/// Kilograms per piece, to three decimals; 0 for no pieces.
double AverageRoll(double net, double pieces);

}  // namespace weaving
