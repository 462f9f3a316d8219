#include "bench/volume.h"

#include <filesystem>
#include <iostream>

#include "app/mill/mill.h"
#include "app/mill/volume.h"
#include "bench/timing.h"

namespace bench {

namespace fs = std::filesystem;

std::string VolumeDatabase(std::int64_t rolls) {
  const std::string path = std::string(TECELAGEM_BINARY_DIR) + "/volume_" + std::to_string(rolls) + ".fdb";
  if (fs::exists(path)) return path;
  const std::string half_made = path + ".part";
  fs::remove(half_made);
  app::firebird::ConnectOptions options;
  options.database = half_made;
  const double milliseconds = Milliseconds([&] {
    app::mill::CreateDemo(options, "bench");
    app::mill::VolumeOptions volume;
    volume.rolls = rolls;
    if (rolls > 0) app::mill::GenerateVolumeFast(options, volume);
  });
  fs::rename(half_made, path);
  std::cout << "made " << path << " in " << milliseconds / 1000 << " s\n";
  return path;
}

}  // namespace bench
