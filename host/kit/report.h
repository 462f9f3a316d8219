// What a screen hands to the report launcher.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/component.h"

namespace host {

/// A graphic or a text report of a screen. The layout itself is the installation's; it reads the datasets of the screen
/// by their component names.
class Report : public Component {
 public:
  using Component::Component;

  /// A function that the layout calls and the report engine does not know, with its arguments as text: the result, or
  /// nothing when the screen does not know it either.
  std::function<std::optional<std::string>(std::string_view name, const std::vector<std::string>& arguments)>
      OnUnknownFunction;
};

}  // namespace host
