// A database with its structure in place, made once and copied for each test.
#pragma once

#include <string>

namespace test {

/// Path of a fresh copy that belongs to the caller. The first call of any test program since the structure last changed
/// makes the original; programs that run at the same time wait for it.
std::string FreshDatabase();

/// Removes a database file and what stands beside it.
void RemoveDatabase(const std::string& path);

}  // namespace test
