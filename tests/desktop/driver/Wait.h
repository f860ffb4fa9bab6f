#pragma once

#include "support/Wait.h"

namespace kelvane::desktop {

using namespace std::chrono_literals;

using testing::HoldsFor;
using testing::kPatience;
using testing::WaitFor;

}  // namespace kelvane::desktop
