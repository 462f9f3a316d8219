// What an industrial scale says in one frame.
#pragma once

#include <string>
#include <string_view>

namespace app::scale {

/// The weight in kilograms that the first complete frame of `received` states; a frame ends at `terminator`. Throws
/// host::InputError, one sentence for the operator, when it states none or one that must not be taken: nothing
/// received, cut off, unstable, negative, overload. frame.cpp lists the formats and where they are from.
double WeightOfFrame(std::string_view received, char terminator);

/// Bytes for a log line: printable ones as they are, all others as "<02>"; "<" itself as "<3C>".
std::string RawBytes(std::string_view received);

}  // namespace app::scale
