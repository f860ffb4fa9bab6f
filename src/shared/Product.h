#pragma once

#include <QIcon>
#include <QLatin1String>

namespace kelvane {

constexpr QLatin1String kProductName("Kelvane");

// The icon of all windows, in sizes from 16 to 128 pixels.
QIcon ProductIcon();

}  // namespace kelvane
