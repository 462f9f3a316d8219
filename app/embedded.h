// Files that travel inside the program: migrations, demonstration data, report layouts.
#pragma once

#include <span>
#include <string_view>

namespace app {

struct EmbeddedFile {
  std::string_view name;  // without folder: "0001_orders.sql"
  std::string_view text;
};

/// Files of schema/*.sql, ordered by name.
std::span<const EmbeddedFile> SchemaFiles();
/// Files of demo/*.csv and demo/*.js, ordered by name.
std::span<const EmbeddedFile> DemoFiles();
/// Files of layouts/*.js, ordered by name.
std::span<const EmbeddedFile> LayoutFiles();

}  // namespace app
