// The families of operations that Windows answers.
#pragma once

#include <memory>

#include "platform/platform.h"

namespace qb::win32 {

std::unique_ptr<HotKeysAndTray> MakeHotKeysAndTray();
std::unique_ptr<RandomSource> MakeRandomSource();

}  // namespace qb::win32
