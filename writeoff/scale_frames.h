// What a scale sends, before it is a weight.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace writeoff {

/// True when an answer has come to its end: figures, and behind them a carriage return or ETX.
bool AnswerEnded(std::string_view received);

/// Of what a continuous scale sent meanwhile, the newest frame that is there from its beginning to its end, at most its
/// first ten characters (STX is one of them). Frames are begun by STX and ended by CR, LF or ETX. One that only
/// the STX of the next one ends must have all ten. A single one without any of these marks is taken as it is. Empty
/// when there is no whole frame.
std::string NewestFrame(std::string_view received);

/// The weight in kilograms that the digits of a continuous scale's frame state; everything that is no digit is dropped.
/// The comma stands before the digit at (number of digits - `decimals`), counted from 1: one more digit follows it than
/// `decimals` says. Nothing when there are not more digits than `decimals`.
std::optional<double> WeightOfDigits(std::string_view frame, int decimals);

}  // namespace writeoff
