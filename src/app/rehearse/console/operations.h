// The names of all operations of the platform: what `fail` and `calls` may name.
#pragma once

#include <string_view>

namespace qb::rehearse {

bool KnownOperation(std::string_view name);

}  // namespace qb::rehearse
