#pragma once

#include <QIcon>
#include <QLatin1String>

namespace kelvane {

constexpr QLatin1String kProductName("Kelvane");

// The icon of all windows, in every size.
QIcon ProductIcon();

}  // namespace kelvane
