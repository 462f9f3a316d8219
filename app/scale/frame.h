// What an industrial scale says in one frame.
#pragma once

#include <string_view>

namespace app::scale {

/// The weight in kilograms that the first complete frame of `received` states; a frame ends at `terminator` or at ETX.
/// When several arrived they must agree. Throws host::InputError, one sentence for the operator, when it states none or
/// one that must not be taken: nothing received, cut off, unstable, negative, overload. frame.cpp lists the formats and
/// where they are from.
double WeightOfFrame(std::string_view received, char terminator);

}  // namespace app::scale
