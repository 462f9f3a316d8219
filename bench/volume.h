// A mill that has been at work for years.
#pragma once

#include <cstdint>
#include <string>

#include "support/road.h"

namespace bench {

// A fabric of the demonstration mill, its yarn reserved in three lots.
inline const test::OrderPlan kPlan = {"00101",
                                      "02",
                                      "M0101",
                                      "0",
                                      160,
                                      {{"F0011", "0", "01", "0020326025", 100},
                                       {"F0011", "0", "11", "0020326026", 48.64},
                                       {"F0021", "0", "01", "0020426044", 11.36}}};

/// The demonstration mill with that many rolls, made once and kept in the build folder; the path of its file.
std::string VolumeDatabase(std::int64_t rolls);

}  // namespace bench
