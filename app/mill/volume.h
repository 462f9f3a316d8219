// Years of work at once: orders with their rolls, yarn, ledger and log, for measuring how the program grows.
#pragma once

#include <cstdint>
#include <string>

#include "app/firebird/database.h"
#include "host/date.h"

namespace app::mill {

struct VolumeOptions {
  std::int64_t rolls = 10000;
  int rolls_per_order = 200;
  int rolls_per_day = 300;  // of the whole mill; the first day follows from it
  int open_orders = 20;     // the last ones stay open, half woven, with yarn reserved for the rest
  host::Date last_day;      // of the last roll; the zero date means the database's today
};

struct VolumeResult {
  std::int64_t rolls = 0;
  int orders = 0;
  std::string first_order;
  std::string last_order;
};

/// Adds rolls to a mill that has prices, compositions, stock deposits and outside yarn deposits (the demonstration mill
/// has). Balances, written-off quantities and reservations agree with the ledger and the rolls afterwards. Yarn lots of
/// their own are bought in for the orders; stock that was there is not touched. Durable order by order. Throws
/// host::InputError when the mill lacks what an order needs; nothing is written then.
VolumeResult GenerateVolume(firebird::Database& database, const VolumeOptions& options);

/// The same for a file that nobody else has open, many times faster: the file does not wait for the disk meanwhile and
/// does again when the call returns or throws. A power cut during the call can ruin the file.
VolumeResult GenerateVolumeFast(const firebird::ConnectOptions& options, const VolumeOptions& volume);

}  // namespace app::mill
