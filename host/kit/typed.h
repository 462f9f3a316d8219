// What a person may type into an input or a cell.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/kit/component.h"

namespace host {

/// Why this text cannot be taken, as a sentence that names the input; nothing when it can. `max_length` in characters,
/// 0 for no limit. Whether the database can hold the characters is not asked here.
std::optional<std::string> TypedObjection(EditKind kind, std::size_t max_length, std::string_view caption,
                                          std::string_view text);

}  // namespace host
