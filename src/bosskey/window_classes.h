// Which windows the Boss Key hides: the tables of classes and gates, and the title rule of dialogs.
#pragma once

#include <string_view>

#include "settings/settings.h"

namespace qb {

// The decision for one window. The class is compared exactly, the title without regard to case.
bool BossKeyHides(std::string_view class_name, std::string_view title, const Settings& settings);

}  // namespace qb
